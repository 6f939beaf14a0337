// What the engine that needs a library needs of it.
extern "C" __attribute__((visibility("default"))) int libraryThatIsNeeded();
int libraryThatIsNeeded() {
    return 1;
}
