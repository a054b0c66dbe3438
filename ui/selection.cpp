#include "ui/selection.h"

#include "foundation/ascii.h"
#include "foundation/media.h"
#include "foundation/text_field.h"
#include "ui/cert_records.h"
#include "ui/password_buffer.h"
#include "ui/processor_bytes.h"

#include <sigildesk/certlist.h>

#include <cstdio>

namespace sigil {

namespace {

constexpr int keyCapacity = sizeof tagSELCERTINFO::bySignPriKey;
static_assert(sizeof tagSELCERTINFO::byKmPriKey == sizeof tagSELCERTINFO::bySignPriKey);

bool hasExpired(const tagCERTINFO& entry) { return validityOf(entry) == Validity::expired; }

} // namespace

Selection::Selection()
{
    InitVariable();
    m_medium = SIGIL_MEDIUM_HARD_DISK;
}

Selection::~Selection()
{
    m_processor.reset();
    InitVariable();
}

void Selection::InitVariable()
{
    m_lastResult = 0;
    m_finish = 1;
    m_medium = SIGIL_MEDIUM_NONE;
    m_accepted = undecided;
    clearEntries();
    m_options.clear();
    wipe(&m_staging, sizeof m_staging);
    wipe(m_lastError, sizeof m_lastError);
    wipe(m_rememberedPassword, sizeof m_rememberedPassword);
}

void Selection::startCall()
{
    m_finish = 0;
    m_accepted = undecided;
}

int Selection::connect()
{
    m_lastResult =
        sigildesk::initialise(m_processor, SIGIL_TOOLKIT_MAKER, language(), m_options.init.szLibraryFolder);
    if (m_lastResult != 0) {
        std::printf("Initalize() CLP_Initalize = %d\n", m_lastResult);
        return m_lastResult;
    }
    m_lastResult = CLP_SetType(processor(), &m_options.listing);
    if (m_lastResult != 0)
        std::printf("Initalize() CLP_SetType = %d\n", m_lastResult);
    return m_lastResult;
}

void Selection::forgetKeys()
{
    wipe(&m_staging, sizeof m_staging);
    m_options.clearMemoryItems();
    for (tagCERTINFO& each : m_entries)
        wipeKeys(each);
}

Outcome Selection::failDrives() { return ended(Step::ListDrives, SIGIL_FOLDERS_NOT_FORMED); }

Outcome Selection::listDisk(int which, char* drive)
{
    clearEntries();
    Outcome outcome = ended(Step::ListDisk, list(which, drive));
    outcome.relisted = true;
    if (outcome.code != 0)
        static_cast<void>(
            std::snprintf(m_lastError, sizeof m_lastError, "LoadCertDisk() m_nRv : %d", outcome.code));
    return outcome;
}

int Selection::list(int which, char* drive)
{
    int rv = CLP_SetMediaType(processor(), which, drive, 0);
    if (rv == 0)
        rv = CLP_LoadCertList(processor());
    if (rv != 0)
        return rv;
    const int found = CLP_GetCertCount(processor());
    if (found <= 0)
        return SIGIL_NO_CERTIFICATE;
    readEntries(found); // an entry that cannot be read stays empty and is listed all the same
    return 0;
}

int Selection::readEntries(int found)
{
    m_entries.assign(static_cast<std::size_t>(found), tagCERTINFO{});
    Entries scratch(1);
    int rv = 0;
    for (int index = 0; index < found; ++index) {
        // Cleared for each certificate, not once: the processor leaves a field alone that a certificate lacks, and
        // the host must not be handed the key-management pair or the paths of the one before.
        scratch[0] = tagCERTINFO{};
        rv = CLP_GetCertInfo(processor(), index, &scratch[0]);
        if (rv == 0)
            CopyCertInfoList(index, scratch[0]);
    }
    return rv;
}

void Selection::CopyCertInfoList(int index, const tagCERTINFO& from)
{
    if (holds(index))
        copyEntry(from, m_entries[static_cast<std::size_t>(index)]);
}

void Selection::clearEntries()
{
    m_entries.clear();
    m_entries.shrink_to_fit(); // gives the memory back, which wipes it
}

int Selection::takeCallersCertificate()
{
    clearEntries(); // one of an earlier call must not stand for the caller's
    return LoadMemoryCert(reinterpret_cast<char*>(m_options.memoryCert), m_options.memoryCertLength,
        reinterpret_cast<char*>(m_options.memoryKey), m_options.memoryKeyLength, nullptr, 0, nullptr, 0);
}

int Selection::LoadMemoryCert(
    char* item1, int length1, char* item2, int length2, char* item3, int length3, char* item4, int length4)
{
    m_medium = SIGIL_MEDIUM_MEMORY;
    m_lastResult = CLP_SetMediaType(processor(), SIGIL_MEDIUM_MEMORY, nullptr, 0);
    if (m_lastResult == 0)
        m_lastResult =
            CLP_LoadMemoryCert(processor(), item1, length1, item2, length2, item3, length3, item4, length4);
    if (m_lastResult != 0)
        return m_lastResult;
    const int found = CLP_GetCertCount(processor());
    m_lastResult = found > 0 ? readEntries(found) : SIGIL_NO_CERTIFICATE;
    return m_lastResult;
}

Outcome Selection::importFile(char* path, char* password)
{
    ProcessorBytes signCert(processor()), signKey(processor()), kmCert(processor()), kmKey(processor());
    m_lastResult = CLP_ImportPFX(processor(), path, password, &signCert.data, &signCert.length, &signKey.data,
        &signKey.length, &kmCert.data, &kmCert.length, &kmKey.data, &kmKey.length);
    if (m_lastResult != 0)
        return {m_lastResult};
    if (signCert.isEmpty() || signKey.isEmpty()) // the import itself succeeded, so 0 is the code: intended
        return {SIGIL_SUCCESS, tellingOf(Step::TakePair, code::missing)};
    clearEntries();
    Outcome outcome = ended(Step::TakePair,
        LoadMemoryCert(signCert.data, signCert.length, signKey.data, signKey.length, kmCert.data, kmCert.length,
            kmKey.data, kmKey.length));
    outcome.relisted = true;
    return outcome;
}

void Selection::rememberPassword(std::string_view password)
{
    wipe(m_rememberedPassword, sizeof m_rememberedPassword);
    copyText(m_rememberedPassword, password);
}

bool Selection::isLocked(int row) const
{
    return (m_options.load.nSelectFlags & SIGIL_SELECT_LOCK_EXPIRED) && holds(row) && hasExpired(at(row));
}

Outcome Selection::select(int row) const
{
    const bool told = holds(row) && hasExpired(at(row)) && (m_options.load.nMessageFlags & SIGIL_MESSAGE_EXPIRED);
    return told ? expired(row) : Outcome{};
}

Outcome Selection::expired(int row) const
{
    return {SIGIL_BAD_ARGUMENT, tellingOf(Step::UseRow, code::expired), std::string(fieldText(at(row).szValidTo))};
}

Outcome Selection::confirm(int row, std::string_view typed)
{
    Outcome refused = checkPassword(typed);
    if (refused.telling)
        return refused;
    if (row < 0)
        return outcomeOf(Step::ChooseRow, code::missing);
    PasswordBuffer<1024> password;
    copyText(password.text, typed);
    Outcome outcome = unlock(row, password.text);
    if (outcome.code == 0)
        m_accepted = 1;
    return outcome;
}

Outcome Selection::checkPassword(std::string_view typed) const
{
    if (typed.empty())
        return outcomeOf(Step::TypePassword, code::missing);
    if (typed.size() >= sizeof m_rememberedPassword)
        return outcomeOf(Step::TypePassword, code::tooLong);
    // An imported certificate has no encrypted key to try the password on; it must be that of the import.
    if (isMemory(m_medium) && !equalsIgnoringCase(typed, m_rememberedPassword))
        return outcomeOf(Step::TypePassword, SIGIL_WRONG_PASSWORD);
    return {};
}

Outcome Selection::unlock(int row, char* password)
{
    m_lastResult = SIGIL_BAD_ARGUMENT;
    if (!holds(row))
        return {m_lastResult};
    if (isLocked(row))
        return expired(row);
    int signKeyLength = at(row).nSignPriKeyLen;
    int kmKeyLength = at(row).nKmPriKeyLen;
    const int rv = isDisk(m_medium) ? decryptKeys(row, password, signKeyLength, kmKeyLength) : 0;
    if (rv != 0)
        return ended(Step::DecryptKeys, rv);
    // A host must never be told of success without a key.
    if (signKeyLength <= 0)
        return ended(Step::UseKey, SIGIL_KEY_NOT_DECRYPTED);
    if (signKeyLength > keyCapacity)
        return {m_lastResult = SIGIL_KEY_NOT_DECRYPTED, tellingOf(Step::UseKey, code::tooLong)};
    Outcome outcome = stageWithRandom(row, password);
    if (outcome.code == 0 && kmKeyLength > keyCapacity)
        outcome.telling = tellingOf(Step::UseKmKey, code::tooLong);
    return outcome;
}

int Selection::decryptKeys(int row, char* password, int& signKeyLength, int& kmKeyLength)
{
    ProcessorBytes signKey(processor()), kmKey(processor());
    const int rv =
        CLP_DecryptPriKey(processor(), row, password, &signKey.data, &signKey.length, &kmKey.data, &kmKey.length);
    if (rv != 0)
        return rv;
    tagCERTINFO& into = *entry(row);
    if (!kmKey.isEmpty())
        into.nKmPriKeyLen = setItem(into.byKmPriKey, sizeof into.byKmPriKey, kmKey.data, kmKey.length);
    into.nSignPriKeyLen = setItem(into.bySignPriKey, sizeof into.bySignPriKey, signKey.data, signKey.length);
    signKeyLength = signKey.isEmpty() ? 0 : signKey.length;
    kmKeyLength = kmKey.isEmpty() ? 0 : kmKey.length;
    return 0;
}

Outcome Selection::stageWithRandom(int row, char* password)
{
    ProcessorBytes random(processor());
    const int rv = CLP_GetPriKeyRandom(processor(), row, password, &random.data, &random.length);
    if (rv == 0) {
        CopySelectCertInfo(row);
        if (!random.isEmpty())
            m_staging.nRandomLen =
                setItem(m_staging.byRandom, sizeof m_staging.byRandom, random.data, random.length);
    }
    return ended(isDisk(m_medium) ? Step::FetchRandomOfDisk : Step::FetchRandom, rv);
}

void Selection::CopySelectCertInfo(int row)
{
    if (holds(row))
        stageResult(at(row), m_medium, m_staging);
}

void Selection::handOut(tagSELCERTINFO* result) const
{
    if (result)
        handOutResult(m_staging, *result);
}

tagCERTINFO* Selection::entry(int row) { return holds(row) ? &m_entries[static_cast<std::size_t>(row)] : nullptr; }

} // namespace sigil
