#include <QCoreApplication>

#include <cstdio>

/// What every program on Qt Core costs.
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    puts("nothing");
    return 0;
}
