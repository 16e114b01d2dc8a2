// What the sanitizers find in the test programs and what is nobody's fault here. Visible, so that they find this.

extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
    // The HEIC encoder of the tests forgets a little memory of its threads. The crypto library lets go of what it keeps
    // for a thread when that thread ends, and the threads of a shared queue are still there when the process ends.
    return "leak:libx265\nleak:CRYPTO_zalloc";
}

extern "C" const char* __tsan_default_suppressions() {
    // GLib counts who uses a source's callback, and has it deleted by the last of them. It was not built for the
    // sanitizer, which sees the deletion and not the counting.
    return "race:QVGLibExecutor::~QVGLibExecutor";
}
