// Compiled as C++11: what a host includes.

#include <sigildesk/crypto.h>

static_assert(sizeof(&HV_Initalize) == sizeof(void*), "the umbrella declares the frame");
