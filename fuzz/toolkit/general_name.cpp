// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as general names, and as what stands in them.

#include "toolkit/engine/x509/general_name.h"
#include "fuzz/toolkit/input.h"
#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/x509/text.h"

FUZZ_TARGET(toolkit_general_name, input)
{
    using namespace toolkit;
    const Bytes bytes = fuzz::der(input);
    require(!addressesText(bytes).empty() || bytes.empty(), "every address has a text");
    fuzz::attempt([&] { identityText(bytes); });
    const ErrorScope scope;
    const unsigned char* at = bytes.data();
    const Handle<GENERAL_NAMES, GENERAL_NAMES_free> names(
        d2i_GENERAL_NAMES(nullptr, &at, static_cast<long>(bytes.size())));
    if (!names)
        return;
    for (const std::string& name : generalNames(names.get()))
        require(utf8FromCp949(name).has_value(), "every name is CP949");
    for (int i = 0; i < sk_GENERAL_NAME_num(names.get()); ++i)
        fuzz::attempt([&] { identifyData(sk_GENERAL_NAME_value(names.get(), i)); });
}
