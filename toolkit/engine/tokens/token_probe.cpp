// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// token-probe FILE [RESERVED]: loads and starts a PKCS#11 module, and prints "+" when it has started and told its slots.
// A module that crashes or hangs does it here, and not in the program that wants to use it.

#include <p11-kit/pkcs11.h>

#include <dlfcn.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

bool starts(const char* file, char* reserved)
{
    void* const library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
    const auto list =
        library ? reinterpret_cast<CK_C_GetFunctionList>(dlsym(library, "C_GetFunctionList")) : nullptr;
    CK_FUNCTION_LIST* module = nullptr;
    if (!list || list(&module) != CKR_OK || !module)
        return false;
    CK_C_INITIALIZE_ARGS arguments{};
    arguments.flags = CKF_OS_LOCKING_OK;
    arguments.pReserved = reserved;
    unsigned long count = 0;
    return module->C_Initialize(&arguments) == CKR_OK && module->C_GetSlotList(CK_FALSE, nullptr, &count) == CKR_OK;
}

} // namespace

int main(int argc, char** argv)
{
    const bool usable = argc > 1 && starts(argv[1], argc > 2 ? argv[2] : nullptr);
    const bool told = usable && write(STDOUT_FILENO, "+", 1) == 1;
    // The answer is whole, even if the module left a process behind that has the stream open.
    shutdown(STDOUT_FILENO, SHUT_WR);
    // Ends without the module's own clean-up, which may go wrong as well.
    _exit(told ? 0 : 1);
}
