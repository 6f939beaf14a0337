// For programs that start an engine more than once: it gives its transforms new contexts; the former ones stay, as they are meant
// to.
#ifdef __SANITIZE_ADDRESS__
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:initFFT";
}
#endif
