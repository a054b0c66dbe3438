// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/selection.h"

#include "foundation/ascii.h"
#include "foundation/media.h"
#include "foundation/text_field.h"
#include "ui/password_buffer.h"
#include "ui/processor_bytes.h"

#include <sigildesk/certlist.h>

#include <cstdio>

namespace sigil {

namespace {

constexpr int keyCapacity = sizeof tagSELCERTINFO::bySignPriKey;
static_assert(sizeof tagSELCERTINFO::byKmPriKey == sizeof tagSELCERTINFO::bySignPriKey);

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
    clearRows();
    m_options.clear();
    wipe(&m_staging, sizeof(tagSELCERTINFO));
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
    wipe(&m_staging, sizeof(tagSELCERTINFO));
    m_options.clearMemoryItems();
}

Outcome Selection::failDrives() { return ended(Step::ListDrives, SIGIL_FOLDERS_NOT_FORMED); }

Outcome Selection::listDisk(int which, char* drive, const ListingPause& pause)
{
    clearRows();
    Outcome outcome = ended(Step::ListDisk, list(which, drive, pause));
    outcome.relisted = true;
    if (outcome.code != 0)
        static_cast<void>(
            std::snprintf(m_lastError, sizeof m_lastError, "LoadCertDisk() m_nRv : %d", outcome.code));
    return outcome;
}

int Selection::list(int which, char* drive, const ListingPause& pause)
{
    int rv = CLP_SetMediaType(processor(), which, drive, 0);
    if (rv == 0) {
        pauseListings(processor(), pause);
        rv = CLP_LoadCertList(processor());
        pauseListings(processor(), {});
    }
    if (rv != 0)
        return rv;
    const int found = CLP_GetCertCount(processor());
    if (found <= 0)
        return SIGIL_NO_CERTIFICATE;
    // An entry that cannot be read stays empty and is listed all the same.
    return readEntries(found, pause) == SIGIL_CANCELLED ? SIGIL_CANCELLED : 0;
}

int Selection::readEntries(int found, const ListingPause& pause)
{
    m_rows.assign(static_cast<std::size_t>(found), {});
    EntryRecord scratch;
    int rv = 0;
    for (int index = 0; index < found; ++index) {
        if (pause && !pause()) {
            clearRows();
            return SIGIL_CANCELLED;
        }
        // Cleared for each certificate, not once: the processor leaves a field alone that a certificate lacks.
        wipe(&*scratch, sizeof *scratch);
        rv = CLP_GetCertInfo(processor(), index, &*scratch);
        if (rv == 0)
            CopyCertInfoList(index, *scratch);
    }
    return rv;
}

void Selection::CopyCertInfoList(int index, const tagCERTINFO& from)
{
    if (holds(index))
        m_rows[static_cast<std::size_t>(index)] = rowOf(from);
}

void Selection::clearRows()
{
    m_rows.clear();
    m_rows.shrink_to_fit();
}

EntryRecord Selection::entry(int row) const
{
    EntryRecord fetched, entry;
    if (CLP_GetCertInfo(processor(), row, &*fetched) == 0)
        copyEntry(*fetched, *entry);
    entry->nValidStatus = at(row).validStatus;
    return entry;
}

void Selection::keepStatus(int row, const tagCERTINFO& entry)
{
    if (holds(row))
        m_rows[static_cast<std::size_t>(row)].validStatus = entry.nValidStatus;
}

int Selection::takeCallersCertificate()
{
    clearRows(); // one of an earlier call must not stand for the caller's
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
    m_lastResult = found > 0 ? readEntries(found, {}) : SIGIL_NO_CERTIFICATE;
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
    clearRows();
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
    return (m_options.load.nSelectFlags & SIGIL_SELECT_LOCK_EXPIRED) && holds(row) && at(row).hasExpired();
}

Outcome Selection::select(int row) const
{
    const bool told = holds(row) && at(row).hasExpired() && (m_options.load.nMessageFlags & SIGIL_MESSAGE_EXPIRED);
    return told ? expired(row) : Outcome{};
}

Outcome Selection::expired(int row) const
{
    return {SIGIL_BAD_ARGUMENT, tellingOf(Step::UseRow, code::expired), at(row).validTo};
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
    EntryRecord used = entry(row);
    int signKeyLength = used->nSignPriKeyLen;
    int kmKeyLength = used->nKmPriKeyLen;
    const int rv = isDisk(m_medium) ? decryptKeys(row, password, *used, signKeyLength, kmKeyLength) : 0;
    if (rv != 0)
        return ended(Step::DecryptKeys, rv);
    // A host must never be told of success without a key.
    if (signKeyLength <= 0)
        return ended(Step::UseKey, SIGIL_KEY_NOT_DECRYPTED);
    if (signKeyLength > keyCapacity)
        return {m_lastResult = SIGIL_KEY_NOT_DECRYPTED, tellingOf(Step::UseKey, code::tooLong)};
    Outcome outcome = stageWithRandom(row, password, *used);
    if (outcome.code == 0 && kmKeyLength > keyCapacity)
        outcome.telling = tellingOf(Step::UseKmKey, code::tooLong);
    return outcome;
}

int Selection::decryptKeys(int row, char* password, tagCERTINFO& into, int& signKeyLength, int& kmKeyLength)
{
    ProcessorBytes signKey(processor()), kmKey(processor());
    const int rv =
        CLP_DecryptPriKey(processor(), row, password, &signKey.data, &signKey.length, &kmKey.data, &kmKey.length);
    if (rv != 0)
        return rv;
    if (!kmKey.isEmpty())
        into.nKmPriKeyLen = setItem(into.byKmPriKey, sizeof into.byKmPriKey, kmKey.data, kmKey.length);
    into.nSignPriKeyLen = setItem(into.bySignPriKey, sizeof into.bySignPriKey, signKey.data, signKey.length);
    signKeyLength = signKey.isEmpty() ? 0 : signKey.length;
    kmKeyLength = kmKey.isEmpty() ? 0 : kmKey.length;
    return 0;
}

Outcome Selection::stageWithRandom(int row, char* password, const tagCERTINFO& entry)
{
    ProcessorBytes random(processor());
    const int rv = CLP_GetPriKeyRandom(processor(), row, password, &random.data, &random.length);
    if (rv == 0) {
        CopySelectCertInfo(entry);
        if (!random.isEmpty())
            m_staging.nRandomLen =
                setItem(m_staging.byRandom, sizeof m_staging.byRandom, random.data, random.length);
    }
    return ended(isDisk(m_medium) ? Step::FetchRandomOfDisk : Step::FetchRandom, rv);
}

void Selection::CopySelectCertInfo(const tagCERTINFO& entry) { stageResult(entry, m_medium, m_staging); }

void Selection::handOut(tagSELCERTINFO* result) const
{
    if (result)
        handOutResult(m_staging, *result);
}

} // namespace sigil
