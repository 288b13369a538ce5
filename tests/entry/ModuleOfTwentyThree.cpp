// A module whose application ends with a status of its own.

extern "C" int corvaneApplicationMain(int argc, char** /*argv*/) {
    return 20 + argc;
}
