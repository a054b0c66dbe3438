#include "handles.h"
#include "text.h"

#include <sigildesk/certlist.h>

#include <cstdio>
#include <iostream>
#include <memory>

namespace host {

namespace {

const char* stateName(const tagCERTINFO& entry)
{
    switch (entry.nValidStatus) {
    case 3:
        return "valid";
    case 4:
        return "expires soon";
    case 5:
        return "expired";
    default:
        return "unknown";
    }
}

void printEntry(int index, const tagCERTINFO& entry)
{
    std::printf("%d\n", index);
    printField("  subject", entry.szSubjectDN);
    printField("  issuer", entry.szIssuerName);
    printField("  usage", entry.szPolicyName);
    printField("  valid to", entry.szValidTo);
    printField("  state", stateName(entry));
}

} // namespace

int listCertificates(const Setting& setting, int pkiTypes)
{
    const Processor processor(setting);
    int status = processor.status();
    tagLOADCERTOPT options{};
    options.nPKITypes = pkiTypes;
    if (status == 0)
        status = CLP_SetType(processor.handle(), &options);
    if (status == 0)
        status = CLP_SetMediaType(processor.handle(), SIGIL_MEDIUM_HARD_DISK, nullptr, 0);
    if (status == 0)
        status = CLP_LoadCertList(processor.handle());
    if (status == SIGIL_NO_CERTIFICATE) {
        std::puts("No certificate found.");
        return done;
    }
    if (status != 0) {
        std::cerr << "The list could not be loaded (code " << status << ").\n";
        return failed;
    }
    const int count = CLP_GetCertCount(processor.handle());
    for (int i = 0; i < count; ++i) {
        auto entry = std::make_unique<tagCERTINFO>();
        if (CLP_GetCertInfo(processor.handle(), i, entry.get()) == 0)
            printEntry(i, *entry);
    }
    return done;
}

} // namespace host
