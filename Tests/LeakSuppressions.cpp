// What the leak checker finds in every test program and what is nobody's fault here. Visible, so that it finds this.

extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
    // The HEIC encoder of the tests forgets a little memory of its threads. The crypto library lets go of what it keeps
    // for a thread when that thread ends, and the threads of a shared queue are still there when the process ends.
    return "leak:libx265\nleak:CRYPTO_zalloc";
}
