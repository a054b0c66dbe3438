// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a message, BER or DER: its content is handed out in pieces, and what is left of it is a message of its own.

#include "toolkit/engine/messages/layout.h"
#include "fuzz/toolkit/input.h"

FUZZ_TARGET(toolkit_layout, input)
{
    using namespace toolkit;
    const Bytes bytes = fuzz::der(input);
    fuzz::attempt([&] {
        const Message message{Input(bytes)};
        std::uint64_t size = 0;
        message.content([&](View piece) { size += piece.size(); });
        require(size <= bytes.size(), "a content is no longer than its message");
        require(message.hasContent() || size == 0, "only what is there is handed out");
        const Bytes skeleton = message.layout().skeleton();
        const Message again{Input(skeleton)};
        require(again.layout().type == message.layout().type, "what is left has the type of the whole");
        message.layout().prefix(size);
    });
    fuzz::attempt([&] { layoutOf(bytes); });
}
