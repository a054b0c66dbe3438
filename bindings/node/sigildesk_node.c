// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// libsigil.so.1 for Node.js: a function of the module for each of the library's, over plain values. index.js makes classes of
// them. A failure is thrown as an object { code, detail }.

#include <node_api.h>
#include <sigil.h>

#include <stdlib.h>
#include <string.h>

enum { mostWords = 7 };

/** What a session's value in JavaScript holds; the session is null after its end. */
typedef struct {
    SigilSession* session;
} Handle;

/** A call from JavaScript. Once something has failed, an exception waits and what follows does nothing. */
typedef struct {
    napi_env env;
    napi_value words[mostWords];
    Handle* handle;
    int failed;
    char* texts[mostWords]; /**< made for this call; overwritten at its end */
} Call;

/* ---- From JavaScript ------------------------------------------------------------------------------------------ */

static void refuse(Call* call, const char* what)
{
    if (!call->failed)
        napi_throw_type_error(call->env, NULL, what);
    call->failed = 1;
}

static Call begin(napi_env env, napi_callback_info info)
{
    Call call = {.env = env};
    size_t count = mostWords;
    void* handle = NULL;
    napi_get_cb_info(env, info, &count, call.words, NULL, NULL);
    if (napi_get_value_external(env, call.words[0], &handle) != napi_ok)
        refuse(&call, "no session");
    call.handle = handle;
    return call;
}

static void end(Call* call)
{
    for (int i = 0; i < mostWords; ++i) {
        if (call->texts[i])
            explicit_bzero(call->texts[i], strlen(call->texts[i]));
        free(call->texts[i]);
    }
}

static SigilSession* session(const Call* call) { return call->handle ? call->handle->session : NULL; }

static int number(Call* call, int place)
{
    int32_t value = 0;
    if (napi_get_value_int32(call->env, call->words[place], &value) != napi_ok)
        refuse(call, "a number is expected");
    return value;
}

static int isNothing(const Call* call, napi_value word)
{
    napi_valuetype type = napi_undefined;
    napi_typeof(call->env, word, &type);
    return type == napi_undefined || type == napi_null;
}

/** A text as the library takes it; null for null and undefined. */
static const char* text(Call* call, int place)
{
    size_t size = 0;
    napi_value word = call->words[place];
    if (call->failed || isNothing(call, word))
        return NULL;
    if (napi_get_value_string_utf8(call->env, word, NULL, 0, &size) != napi_ok) {
        refuse(call, "a text is expected");
        return NULL;
    }
    char* room = malloc(size + 1);
    if (!room) {
        refuse(call, "out of memory");
        return NULL;
    }
    napi_get_value_string_utf8(call->env, word, room, size + 1, &size);
    if (strlen(room) != size)
        refuse(call, "the text holds a zero character");
    return call->texts[place] = room;
}

static SigilBytes bytesOf(Call* call, napi_value word)
{
    SigilBytes bytes = {NULL, 0};
    napi_typedarray_type type = napi_int8_array;
    void* data = NULL;
    if (call->failed || isNothing(call, word))
        return bytes;
    if (napi_get_typedarray_info(call->env, word, &type, &bytes.size, &data, NULL, NULL) != napi_ok ||
        type != napi_uint8_array)
        refuse(call, "bytes are expected");
    bytes.data = data ? data : (unsigned char*)""; // none at all are something else than an empty array
    return bytes;
}

static SigilBytes bytes(Call* call, int place) { return bytesOf(call, call->words[place]); }

/** An array of certificates, to be released with free(); null when there are none. */
static SigilBytes* certificatesOf(Call* call, int place, int* count)
{
    uint32_t length = 0;
    if (!call->failed && napi_get_array_length(call->env, call->words[place], &length) != napi_ok)
        refuse(call, "an array of certificates is expected");
    SigilBytes* certificates = length > 0 ? calloc(length, sizeof *certificates) : NULL;
    if (length > 0 && !certificates)
        refuse(call, "out of memory");
    for (uint32_t i = 0; certificates && i < length; ++i) {
        napi_value element = NULL;
        napi_get_element(call->env, call->words[place], i, &element);
        certificates[i] = bytesOf(call, element);
    }
    *count = (int)length;
    return certificates;
}

/* ---- To JavaScript -------------------------------------------------------------------------------------------- */

static void set(napi_env env, napi_value object, const char* name, napi_value value)
{
    napi_set_named_property(env, object, name, value);
}

static void setText(napi_env env, napi_value object, const char* name, const char* text)
{
    napi_value value;
    napi_create_string_utf8(env, text ? text : "", NAPI_AUTO_LENGTH, &value);
    set(env, object, name, value);
}

static void setNumber(napi_env env, napi_value object, const char* name, double number)
{
    napi_value value;
    napi_create_double(env, number, &value);
    set(env, object, name, value);
}

static void setFlag(napi_env env, napi_value object, const char* name, int flag)
{
    napi_value value;
    napi_get_boolean(env, flag != 0, &value);
    set(env, object, name, value);
}

static napi_value copyOf(napi_env env, const void* data, size_t size)
{
    napi_value buffer = NULL;
    napi_create_buffer_copy(env, size, data ? data : "", NULL, &buffer);
    return buffer;
}

static napi_value object(napi_env env)
{
    napi_value made;
    napi_create_object(env, &made);
    return made;
}

/** True when the library succeeded; else its failure is thrown. */
static int succeeded(Call* call, int code, const SigilSession* session)
{
    if (code == 0 || call->failed)
        return code == 0;
    napi_value failure = object(call->env);
    setNumber(call->env, failure, "code", code);
    setText(call->env, failure, "detail", sigil_error_text(session));
    napi_throw(call->env, failure);
    call->failed = 1;
    return 0;
}

static napi_value nothing(Call* call, int code)
{
    succeeded(call, code, session(call));
    end(call);
    return NULL;
}

/** The bytes that the library made, copied and wiped. */
static napi_value taken(Call* call, int code, SigilBytes* made)
{
    napi_value copy = succeeded(call, code, session(call)) ? copyOf(call->env, made->data, made->size) : NULL;
    sigil_free(made);
    end(call);
    return copy;
}

static napi_value fieldsObject(napi_env env, const SigilFields* fields)
{
    const struct {
        const char* name;
        const char* text;
    } texts[] = {
        {"name", fields->name},
        {"subject", fields->subject},
        {"issuer", fields->issuer},
        {"issuerName", fields->issuer_name},
        {"serial", fields->serial},
        {"use", fields->use},
        {"policy", fields->policy},
        {"policies", fields->policies},
        {"version", fields->version},
        {"signatureAlgorithm", fields->signature_algorithm},
        {"keyAlgorithm", fields->key_algorithm},
        {"keyLength", fields->key_length},
        {"keyUsage", fields->key_usage},
        {"alternativeName", fields->alternative_name},
        {"authorityKeyId", fields->authority_key_id},
        {"subjectKeyId", fields->subject_key_id},
        {"revocationList", fields->revocation_list},
        {"authorityAccess", fields->authority_access},
        {"certificateFile", fields->certificate_file},
        {"keyFile", fields->key_file},
        {"kmCertificateFile", fields->km_certificate_file},
        {"kmKeyFile", fields->km_key_file},
    };
    napi_value made = object(env);
    for (size_t i = 0; i < sizeof texts / sizeof texts[0]; ++i)
        setText(env, made, texts[i].name, texts[i].text);
    setNumber(env, made, "validFrom", (double)fields->valid_from);
    setNumber(env, made, "validTo", (double)fields->valid_to);
    setNumber(env, made, "daysLeft", fields->days_left);
    setNumber(env, made, "family", fields->family);
    setFlag(env, made, "expired", fields->expired);
    setFlag(env, made, "expiresSoon", fields->expires_soon);
    setFlag(env, made, "hasKey", fields->has_key);
    setFlag(env, made, "hasKm", fields->has_km);
    setFlag(env, made, "unlocked", fields->unlocked);
    return made;
}

/* ---- Sessions ------------------------------------------------------------------------------------------------- */

static void finalize(napi_env env, void* data, void* hint)
{
    (void)env;
    (void)hint;
    sigil_close(((Handle*)data)->session);
    free(data);
}

static napi_value create(napi_env env, napi_callback_info info)
{
    (void)info;
    napi_value value = NULL;
    Handle* handle = calloc(1, sizeof *handle);
    if (handle && napi_create_external(env, handle, finalize, NULL, &value) != napi_ok)
        free(handle);
    return value;
}

static napi_value openSession(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    SigilOpenOptions options = {.size = sizeof options};
    options.folder = text(&call, 1);
    options.toolkit = number(&call, 2);
    options.language = number(&call, 3);
    SigilSession* made = NULL;
    if (!call.failed) {
        succeeded(&call, sigil_open(&options, &made), made);
        call.handle->session = made;
    }
    end(&call);
    return NULL;
}

static napi_value closeSession(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    if (!call.failed) {
        sigil_close(session(&call));
        call.handle->session = NULL;
    }
    return NULL;
}

static napi_value describe(napi_env env, napi_callback_info info)
{
    napi_value words[2];
    size_t count = 2;
    int32_t code = 0;
    int32_t language = 0;
    napi_get_cb_info(env, info, &count, words, NULL, NULL);
    napi_get_value_int32(env, words[0], &code);
    napi_get_value_int32(env, words[1], &language);
    struct SigilCodeText text;
    sigil_code_text(code, language, &text);
    napi_value made = object(env);
    setText(env, made, "name", text.name);
    setText(env, made, "sentence", text.sentence);
    setText(env, made, "advice", text.advice);
    return made;
}

static napi_value version(napi_env env, napi_callback_info info)
{
    (void)info;
    napi_value value;
    napi_create_string_utf8(env, sigil_version(), NAPI_AUTO_LENGTH, &value);
    return value;
}

/* ---- The list ------------------------------------------------------------------------------------------------- */

static const char* textOf(Call* call, int place, napi_value filter, const char* name)
{
    if (!call->failed && napi_get_named_property(call->env, filter, name, &call->words[place]) != napi_ok)
        refuse(call, "a filter is expected");
    return text(call, place);
}

static int numberOf(Call* call, napi_value filter, const char* name)
{
    if (call->failed || napi_get_named_property(call->env, filter, name, &call->words[6]) != napi_ok)
        return 0;
    return number(call, 6);
}

static napi_value list(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const napi_value filter = call.words[1];
    SigilListOptions options = {.size = sizeof options};
    options.medium = textOf(&call, 1, filter, "medium");
    options.issuer = textOf(&call, 2, filter, "issuer");
    options.policy = textOf(&call, 3, filter, "policy");
    options.subject = textOf(&call, 4, filter, "subject");
    options.serial = textOf(&call, 5, filter, "serial");
    options.families = numberOf(&call, filter, "families");
    options.expires_within = numberOf(&call, filter, "expiresWithin");
    options.valid = numberOf(&call, filter, "valid");
    options.expired = numberOf(&call, filter, "expired");
    int count = 0;
    napi_value value = NULL;
    if (!call.failed && succeeded(&call, sigil_list(session(&call), &options, &count), session(&call)))
        napi_create_int32(env, count, &value);
    end(&call);
    return value;
}

static napi_value fields(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int entry = number(&call, 1);
    SigilFields told = {.size = sizeof told};
    if (call.failed || !succeeded(&call, sigil_fields(session(&call), entry, &told), session(&call)))
        return NULL;
    return fieldsObject(env, &told);
}

static napi_value certificateFields(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const SigilBytes der = bytes(&call, 1);
    SigilFields told = {.size = sizeof told};
    if (call.failed ||
        !succeeded(&call, sigil_certificate_fields(session(&call), der.data, der.size, &told), session(&call)))
        return NULL;
    return fieldsObject(env, &told);
}

static napi_value certificate(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int entry = number(&call, 1);
    const int pair = number(&call, 2);
    SigilBytes made = {NULL, 0};
    return taken(&call, call.failed ? -1 : sigil_certificate(session(&call), entry, pair, &made), &made);
}

/* ---- Keys ----------------------------------------------------------------------------------------------------- */

static napi_value unlock(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int entry = number(&call, 1);
    const char* password = text(&call, 2);
    return nothing(&call, call.failed ? -1 : sigil_unlock(session(&call), entry, password));
}

static napi_value lock(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int entry = number(&call, 1);
    return nothing(&call, call.failed ? -1 : sigil_lock(session(&call), entry));
}

static napi_value privateKey(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int entry = number(&call, 1);
    const int pair = number(&call, 2);
    const char* password = text(&call, 3);
    SigilBytes made = {NULL, 0};
    return taken(&call, call.failed ? -1 : sigil_private_key(session(&call), entry, pair, password, &made), &made);
}

static napi_value identity(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int entry = number(&call, 1);
    const char* digits = text(&call, 2);
    return nothing(&call, call.failed ? -1 : sigil_identity(session(&call), entry, digits));
}

/* ---- Messages ------------------------------------------------------------------------------------------------- */

static napi_value sign(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int entry = number(&call, 1);
    SigilSignOptions options = {.size = sizeof options};
    options.form = number(&call, 2);
    const SigilBytes data = bytes(&call, 3);
    options.stamp_url = text(&call, 4);
    SigilBytes made = {NULL, 0};
    const int code = call.failed ? -1 : sigil_sign(session(&call), entry, &options, data.data, data.size, &made);
    return taken(&call, code, &made);
}

/** Answers { content, signers }, the number of them. */
static napi_value verify(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const SigilBytes message = bytes(&call, 1);
    const SigilBytes data = bytes(&call, 2);
    SigilBytes content = {NULL, 0};
    int signers = 0;
    const int code = call.failed
        ? -1
        : sigil_verify(session(&call), message.data, message.size, data.data, data.size, &content, &signers);
    napi_value copy = taken(&call, code, &content);
    if (!copy)
        return NULL;
    napi_value made = object(env);
    set(env, made, "content", copy);
    setNumber(env, made, "signers", signers);
    return made;
}

static napi_value signer(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int index = number(&call, 1);
    SigilSigner told = {.size = sizeof told};
    if (call.failed || !succeeded(&call, sigil_signer(session(&call), index, &told), session(&call)))
        return NULL;
    napi_value made = object(env);
    set(env, made, "certificate", copyOf(env, told.certificate, told.certificate_size));
    setNumber(env, made, "signingTime", (double)told.signing_time);
    setNumber(env, made, "stampTime", (double)told.stamp_time);
    setNumber(env, made, "stampCode", told.stamp_code);
    return made;
}

static napi_value verifyRaw(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const SigilBytes der = bytes(&call, 1);
    const SigilBytes data = bytes(&call, 2);
    const SigilBytes value = bytes(&call, 3);
    return nothing(&call,
        call.failed
            ? -1
            : sigil_verify_raw(session(&call), der.data, der.size, data.data, data.size, value.data, value.size));
}

static napi_value encrypt(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int cipher = number(&call, 1);
    int count = 0;
    SigilBytes* recipients = certificatesOf(&call, 2, &count);
    const SigilBytes data = bytes(&call, 3);
    SigilBytes made = {NULL, 0};
    const int code =
        call.failed ? -1 : sigil_encrypt(session(&call), cipher, recipients, count, data.data, data.size, &made);
    free(recipients);
    return taken(&call, code, &made);
}

static napi_value decrypt(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int entry = number(&call, 1);
    const SigilBytes message = bytes(&call, 2);
    SigilBytes made = {NULL, 0};
    const int code = call.failed ? -1 : sigil_decrypt(session(&call), entry, message.data, message.size, &made);
    return taken(&call, code, &made);
}

/* ---- The dialog ----------------------------------------------------------------------------------------------- */

/** Answers the number of the entry. */
static napi_value pick(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const napi_value filter = call.words[1];
    SigilPickOptions options = {.size = sizeof options};
    options.policies = textOf(&call, 1, filter, "policies");
    options.subject = textOf(&call, 2, filter, "subject");
    options.serial = textOf(&call, 3, filter, "serial");
    options.families = numberOf(&call, filter, "families");
    options.with_km = numberOf(&call, filter, "withKm");
    options.no_expired = numberOf(&call, filter, "noExpired");
    options.lock_expired = numberOf(&call, filter, "lockExpired");
    int entry = 0;
    napi_value value = NULL;
    if (!call.failed && succeeded(&call, sigil_pick(session(&call), &options, &entry), session(&call)))
        napi_create_int32(env, entry, &value);
    end(&call);
    return value;
}

/* ---- Stores --------------------------------------------------------------------------------------------------- */

static napi_value exportPairs(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int entry = number(&call, 1);
    const int protection = number(&call, 2);
    const char* password = text(&call, 3);
    SigilBytes made = {NULL, 0};
    const int code = call.failed ? -1 : sigil_export(session(&call), entry, protection, password, &made);
    return taken(&call, code, &made);
}

static napi_value importPairs(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const SigilBytes file = bytes(&call, 1);
    const char* password = text(&call, 2);
    const char* medium = text(&call, 3);
    const int replace = number(&call, 4);
    return nothing(
        &call, call.failed ? -1 : sigil_import(session(&call), file.data, file.size, password, medium, replace));
}

static napi_value copy(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int entry = number(&call, 1);
    const char* medium = text(&call, 2);
    const int replace = number(&call, 3);
    return nothing(&call, call.failed ? -1 : sigil_copy(session(&call), entry, medium, replace));
}

static napi_value deleteFiles(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int entry = number(&call, 1);
    return nothing(&call, call.failed ? -1 : sigil_delete(session(&call), entry));
}

static napi_value changePassword(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int entry = number(&call, 1);
    const char* from = text(&call, 2);
    const char* to = text(&call, 3);
    return nothing(&call, call.failed ? -1 : sigil_change_password(session(&call), entry, from, to));
}

/* ---- Judging and time stamps ---------------------------------------------------------------------------------- */

static int64_t seconds(Call* call, int place)
{
    int64_t value = 0;
    if (napi_get_value_int64(call->env, call->words[place], &value) != napi_ok)
        refuse(call, "a number is expected");
    return value;
}

static napi_value verifyCertificate(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    SigilJudgeOptions options = {.size = sizeof options};
    const SigilBytes der = bytes(&call, 1);
    SigilBytes* trusted = certificatesOf(&call, 2, &options.trusted_count);
    options.trusted = trusted;
    options.purpose = number(&call, 3);
    options.time = seconds(&call, 4);
    options.no_revocation = number(&call, 5);
    const int code = call.failed ? -1 : sigil_verify_certificate(session(&call), &options, der.data, der.size);
    free(trusted);
    return nothing(&call, code);
}

static napi_value status(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    SigilJudgeOptions options = {.size = sizeof options};
    SigilStatus told = {.size = sizeof told};
    const SigilBytes der = bytes(&call, 1);
    SigilBytes* trusted = certificatesOf(&call, 2, &options.trusted_count);
    options.trusted = trusted;
    options.responder = text(&call, 3);
    const int code = call.failed ? -1 : sigil_status(session(&call), &options, der.data, der.size, &told);
    free(trusted);
    nothing(&call, code);
    if (code != 0)
        return NULL;
    napi_value made = object(env);
    setFlag(env, made, "revoked", told.revoked);
    setFlag(env, made, "byList", told.by_list);
    setNumber(env, made, "revokedAt", (double)told.revoked_at);
    return made;
}

static napi_value timestamp(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const char* url = text(&call, 1);
    const SigilBytes data = bytes(&call, 2);
    SigilBytes made = {NULL, 0};
    const int code = call.failed ? -1 : sigil_timestamp(session(&call), url, data.data, data.size, &made);
    return taken(&call, code, &made);
}

static napi_value stamp(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const SigilBytes token = bytes(&call, 1);
    const SigilBytes data = bytes(&call, 2);
    SigilStamp told = {.size = sizeof told};
    if (call.failed ||
        !succeeded(&call, sigil_stamp(session(&call), token.data, token.size, data.data, data.size, &told),
            session(&call)))
        return NULL;
    napi_value made = object(env);
    setNumber(env, made, "time", (double)told.time);
    setText(env, made, "policy", told.policy);
    setText(env, made, "serial", told.serial);
    return made;
}

/* ---- Tokens and findings -------------------------------------------------------------------------------------- */

static napi_value counted(Call* call, int code, int count)
{
    napi_value value = NULL;
    if (succeeded(call, code, session(call)))
        napi_create_int32(call->env, count, &value);
    end(call);
    return value;
}

static napi_value tokens(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    int count = 0;
    const int code = call.failed ? -1 : sigil_tokens(session(&call), &count);
    return counted(&call, code, count);
}

static napi_value token(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int index = number(&call, 1);
    SigilToken told = {.size = sizeof told};
    if (call.failed || !succeeded(&call, sigil_token(session(&call), index, &told), session(&call)))
        return NULL;
    napi_value made = object(env);
    setNumber(env, made, "slot", (double)told.slot);
    setFlag(env, made, "initialised", told.initialised);
    setNumber(env, made, "certificates", told.certificates);
    setText(env, made, "label", told.label);
    setText(env, made, "maker", told.maker);
    setText(env, made, "model", told.model);
    setText(env, made, "serial", told.serial);
    return made;
}

static napi_value tokenCertificate(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int index = number(&call, 1);
    const int place = number(&call, 2);
    SigilBytes made = {NULL, 0};
    return taken(&call, call.failed ? -1 : sigil_token_certificate(session(&call), index, place, &made), &made);
}

static napi_value examine(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const char* medium = text(&call, 1);
    int count = 0;
    const int code = call.failed ? -1 : sigil_examine(session(&call), medium, &count);
    return counted(&call, code, count);
}

static napi_value finding(napi_env env, napi_callback_info info)
{
    Call call = begin(env, info);
    const int index = number(&call, 1);
    SigilFinding told = {.size = sizeof told};
    if (call.failed || !succeeded(&call, sigil_finding(session(&call), index, &told), session(&call)))
        return NULL;
    napi_value made = object(env);
    setFlag(env, made, "listed", told.listed);
    setText(env, made, "path", told.path);
    setText(env, made, "rule", told.rule);
    setText(env, made, "detail", told.detail);
    setText(env, made, "mend", told.mend);
    return made;
}

/* ---- The module ----------------------------------------------------------------------------------------------- */

static napi_value start(napi_env env, napi_value exports)
{
    static const struct {
        const char* name;
        napi_callback function;
    } functions[] = {
        {"create", create},
        {"open", openSession},
        {"close", closeSession},
        {"describe", describe},
        {"version", version},
        {"list", list},
        {"fields", fields},
        {"certificateFields", certificateFields},
        {"certificate", certificate},
        {"unlock", unlock},
        {"lock", lock},
        {"privateKey", privateKey},
        {"identity", identity},
        {"sign", sign},
        {"verify", verify},
        {"signer", signer},
        {"verifyRaw", verifyRaw},
        {"encrypt", encrypt},
        {"decrypt", decrypt},
        {"pick", pick},
        {"exportPairs", exportPairs},
        {"importPairs", importPairs},
        {"copy", copy},
        {"deleteFiles", deleteFiles},
        {"changePassword", changePassword},
        {"verifyCertificate", verifyCertificate},
        {"status", status},
        {"timestamp", timestamp},
        {"stamp", stamp},
        {"tokens", tokens},
        {"token", token},
        {"tokenCertificate", tokenCertificate},
        {"examine", examine},
        {"finding", finding},
    };
    for (size_t i = 0; i < sizeof functions / sizeof functions[0]; ++i) {
        napi_value function;
        napi_create_function(env, functions[i].name, NAPI_AUTO_LENGTH, functions[i].function, NULL, &function);
        set(env, exports, functions[i].name, function);
    }
    return exports;
}

NAPI_MODULE(sigildesk_node, start)
