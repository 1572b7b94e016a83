// Asked by the leak sanitizer.

/// Qt keeps the recognizer of a gesture to the end of the process.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:QScroller::grabGesture";
}

/// Nothing is printed where nothing is found.
extern "C" const char* __lsan_default_options() {
    return "print_suppressions=0";
}
