// What the leak sanitizer is told to overlook: the font cache, which fontconfig keeps until the process ends.

extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\n"; }
