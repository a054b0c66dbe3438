// HVTK_PFX_: PKCS#12 files.

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/pkcs12/pairs.h"

#include <cstdint>

using namespace toolkit;

namespace {

Pkcs12Content onePair(const Context& context, BINSTR* certificate, BINSTR* key, BINSTR* others)
{
    return {
        {{toBytes(in(certificate)), toSecret(in(key))}}, otherCertificates(context.library(), inOptional(others))};
}

int exportPairs(void* context, int option, const char* password, BINSTR* certificates, BINSTR* keys, BINSTR* others,
    BINSTR* out)
{
    return call(context, [&](Context& state) {
        const Pkcs12Content content{pairsOf(state.library(), in(certificates), in(keys)),
            otherCertificates(state.library(), inOptional(others))};
        put(writePkcs12(state.library(), content, in(password), option), out);
    });
}

int importPairs(
    void* context, int mode, const char* password, BINSTR* file, BINSTR* certificates, BINSTR* keys, BINSTR* others)
{
    return call(context, [&](Context& state) {
        const Pkcs12Content content = readPkcs12(state.library(), in(file), in(password), mode);
        const Secret certificateBytes = certificateList(content.pairs).encode();
        const Secret keyBytes = keyList(content.pairs).encode();
        const Secret otherBytes = certificateList(content.others).encode();
        if (others)
            put({{certificateBytes, certificates}, {keyBytes, keys}, {otherBytes, others}});
        else
            put({{certificateBytes, certificates}, {keyBytes, keys}});
    });
}

} // namespace

TOOLKIT_FUNCTION HVTK_PFX_Export(
    void* context, int option, char* password, BINSTR* certificate, BINSTR* key, BINSTR* out)
{
    return call(context, [&](Context& state) {
        put(writePkcs12(state.library(), onePair(state, certificate, key, nullptr), in(password), option), out);
    });
}

/** With the certificates of authorities, in the protection of SIGIL_TK_PFX_3DES. */
TOOLKIT_FUNCTION HVTK_PFX_Export2(
    void* context, char* password, BINSTR* certificate, BINSTR* key, BINSTR* others, BINSTR* out)
{
    return call(context, [&](Context& state) {
        const Pkcs12Content content = onePair(state, certificate, key, others);
        put(writePkcs12(state.library(), content, in(password), SIGIL_TK_PFX_3DES), out);
    });
}

TOOLKIT_FUNCTION HVTK_PFX_Import(
    void* context, char* password, BINSTR* file, BINSTR* certificate, BINSTR* key, BINSTR* others)
{
    return call(context, [&](Context& state) {
        const Pkcs12Content content = readPkcs12(state.library(), in(file), in(password), SIGIL_TK_PFX_STRICT);
        const CertifiedKey& pair = signingPair(state.library(), content);
        const Secret otherBytes = certificateList(content.others).encode();
        if (others)
            put({{pair.certificate, certificate}, {pair.keyInfo, key}, {otherBytes, others}});
        else
            put({{pair.certificate, certificate}, {pair.keyInfo, key}});
    });
}

/** Two argument lists reach this symbol: (option, password, certificates, keys, out), and (password, certificates, keys,
 *  others, out) in the protection of SIGIL_TK_PFX_3DES. Options are small numbers and a password is a pointer, so the
 *  first argument tells which one it is; all six arguments travel in registers on LP64 machines. */
TOOLKIT_FUNCTION HVTK_PFX_ExportMultiPair(void* context, std::intptr_t optionOrPassword,
    void* passwordOrCertificates, BINSTR* third, BINSTR* fourth, BINSTR* out)
{
    constexpr std::intptr_t lowestAddress = 4096;
    if (optionOrPassword >= 0 && optionOrPassword < lowestAddress)
        return exportPairs(context, static_cast<int>(optionOrPassword),
            static_cast<const char*>(passwordOrCertificates), third, fourth, nullptr, out);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a pointer that came as a number
    const char* password = reinterpret_cast<const char*>(optionOrPassword);
    return exportPairs(
        context, SIGIL_TK_PFX_3DES, password, static_cast<BINSTR*>(passwordOrCertificates), third, fourth, out);
}

TOOLKIT_FUNCTION HVTK_PFX_ImportMultiPair(
    void* context, char* password, BINSTR* file, BINSTR* certificates, BINSTR* keys, BINSTR* others)
{
    return importPairs(context, SIGIL_TK_PFX_STRICT, password, file, certificates, keys, others);
}

TOOLKIT_FUNCTION HVTK_PFX_ImportMultiPair2(
    void* context, int mode, char* password, BINSTR* file, BINSTR* certificates, BINSTR* keys, BINSTR* others)
{
    return importPairs(context, mode, password, file, certificates, keys, others);
}
