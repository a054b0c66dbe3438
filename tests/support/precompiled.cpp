// Compiles precompiled.h as the tests will be compiled that use it.
