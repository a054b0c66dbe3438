// Any bytes as an enveloped or encrypted message: its recipients, and its content under a key that is the same in every run.

#include "fuzz/toolkit/input.h"
#include "toolkit/engine/messages/enveloped.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const toolkit::Bytes bytes = fuzz::input(data, size);
    const toolkit::Bytes key(16, 0x11);
    fuzz::attempt([&] {
        const toolkit::Message message{toolkit::Input(bytes)};
        fuzz::attempt([&] { toolkit::recipientsOf(fuzz::library(), message); });
        toolkit::openEncrypted(fuzz::library(), message, key, [](toolkit::View) {});
    });
    return 0;
}
