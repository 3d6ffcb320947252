// Built into every executable of a sanitizer build. System libraries that
// allocate once per process and never free - the font configuration and the
// D-Bus connection of Qt's platform plugins - are not ours to fix, and must
// not fail a leak check that is there for our own code.
extern "C" __attribute__((visibility("default"), used)) const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig.so\n"
           "leak:libdbus-1.so\n";
}
