#include "Environment.h"

#include <QByteArrayList>

#include <vector>

#include <unistd.h>

namespace {

/// Remembered for the whole run, as whoever starts a program, from anywhere, needs them; the
/// pointers lead into the texts.
QByteArrayList texts;
std::vector<char*> pointers;

} // namespace

void rememberEnvironment() {
    texts.clear();
    pointers.clear();
    for (char** variable = environ; *variable; ++variable)
        texts.append(*variable);
    for (QByteArray& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
}

char** givenEnvironment() {
    return pointers.empty() ? environ : pointers.data();
}
