// GPKI_API_, GPKI_BINSTR_ and GPKI_BASE64_: the context, its settings, byte strings and their text form.

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/base/settings.h"
#include "toolkit/engine/x509/text.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_API_Init(void** context, char*) { return init(context); }

TOOLKIT_FUNCTION GPKI_API_Finish(void** context) { return finish(context); }

TOOLKIT_FUNCTION GPKI_API_GetErrInfo(void* context, int capacity, char* out)
{
    return errorText(context, capacity, out);
}

TOOLKIT_FUNCTION GPKI_API_GetVersion(void* context, int capacity, char* out)
{
    return call(context, [&](Context&) { putText(versionText, capacity, out); });
}

/** The number is a capacity that callers fix at 8 bytes, so the text is cut to that. */
TOOLKIT_FUNCTION GPKI_API_GetInfo(void* context, int capacity, char* out)
{
    return call(context, [&](Context&) { putText(opensslVersion(), capacity, out); });
}

TOOLKIT_FUNCTION GPKI_API_SetOption(void* context, int option)
{
    return call(context, [&](Context&) { require(option == SIGIL_TK_OPTION_NONE, SIGIL_TK_OPTION, "option"); });
}

TOOLKIT_FUNCTION GPKI_API_SetConfFile(void* context, char* path)
{
    return call(context, [&](Context&) { requireConfFile(in(path)); });
}

/** Reads "YYYY-MM-DD HH:MM:SS", the form in which validity is printed. */
TOOLKIT_FUNCTION GPKI_API_Str2Time(void* context, char* text, long* time)
{
    return call(context, [&](Context&) {
        const auto value = timeFromText(in(text));
        require(value.has_value(), SIGIL_TK_ENCODING, "time");
        putValue(static_cast<long>(*value), time);
    });
}

TOOLKIT_FUNCTION GPKI_API_SetHashAlgo(void* context, int algorithm)
{
    return call(context, [&](Context& state) { setHashAlgorithm(state, algorithm); });
}

TOOLKIT_FUNCTION GPKI_BINSTR_Create(BINSTR* bytes)
{
    return call([&] { putValue(BINSTR{}, bytes); });
}

TOOLKIT_FUNCTION GPKI_BINSTR_Delete(BINSTR* bytes)
{
    return call([&] {
        require(bytes != nullptr, SIGIL_TK_ARGUMENT);
        release(bytes);
    });
}

TOOLKIT_FUNCTION GPKI_BINSTR_SetData(unsigned char* data, int length, BINSTR* out)
{
    return call([&] {
        require(data && length > 0, SIGIL_TK_ARGUMENT);
        put({data, static_cast<std::size_t>(length)}, out);
    });
}

TOOLKIT_FUNCTION GPKI_BASE64_Encode(void* context, BINSTR* bytes, BINSTR* out)
{
    return call(context, [&](Context&) { put(view(base64(in(bytes))), out); });
}

TOOLKIT_FUNCTION GPKI_BASE64_Decode(void* context, BINSTR* text, BINSTR* out)
{
    return call(context, [&](Context&) { put(fromBase64(in(text)), out); });
}
