/* Preloaded into a program, gives it another home folder: whoever opens the machine's password file gets the file that
 * OTHER_HOME_PASSWD names instead. For the demo and for tests, which must not touch the store of whoever runs them. */
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

typedef FILE* Open(const char* path, const char* mode);

static FILE* open_by(const char* function, const char* path, const char* mode)
{
    const char* other = getenv("OTHER_HOME_PASSWD");
    Open* open_file = (Open*)dlsym(RTLD_NEXT, function);
    return open_file(other && strcmp(path, "/etc/passwd") == 0 ? other : path, mode);
}

__attribute__((visibility("default"))) FILE* fopen(const char* path, const char* mode)
{
    return open_by("fopen", path, mode);
}

__attribute__((visibility("default"))) FILE* fopen64(const char* path, const char* mode)
{
    return open_by("fopen64", path, mode);
}
