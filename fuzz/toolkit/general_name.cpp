// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as general names, as what stands in them, and as a string of any type.

#include "toolkit/engine/x509/general_name.h"
#include "fuzz/toolkit/input.h"
#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/x509/text.h"

FUZZ_TARGET(toolkit_general_name, input)
{
    using namespace toolkit;
    const Bytes bytes = fuzz::der(input);
    for (const int type : {V_ASN1_UTF8STRING, V_ASN1_BMPSTRING, V_ASN1_UNIVERSALSTRING, V_ASN1_T61STRING,
             V_ASN1_IA5STRING, V_ASN1_PRINTABLESTRING, V_ASN1_INTEGER})
        require(utf8FromCp949(asn1Text(type, bytes)).has_value(), "every string is shown as CP949");
    require(bytes.empty() || bytesOfHex(hexText(bytes)) == bytes, "hexadecimal text comes back as the bytes");
    fuzz::attempt([&] { bytesOfHex(fuzz::text(input)); });
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
