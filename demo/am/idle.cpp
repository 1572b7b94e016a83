// Stands for a process of the phone that the menu's restart ends with it; it has nothing to do
// here.
#include <unistd.h>

int main() {
    for (;;)
        pause();
}
