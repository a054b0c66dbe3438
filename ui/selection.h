// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the selection dialog decides: lists, imports, unlocks and hands out certificates. No widget is needed.
 *
 *  Order of use: takeOptions, connect, then a medium; after a confirmed certificate handOut.
 */
#pragma once

#include "certlist/listing_pause.h"
#include "ui/cert_records.h"
#include "ui/selection_options.h"
#include "ui/tellings.h"

#include <sigildesk/dialogs.h>
#include <sigildesk/handles.h>
#include <sigildesk/records.h>

#include <string_view>
#include <vector>

namespace sigil {

class Selection {
public:
    using Rows = std::vector<CertificateRow>;

    Selection();
    ~Selection();
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

    /** Puts everything back to its start, with no medium listed. */
    void InitVariable();
    /** A call of ShowUserCert begins: nothing is decided, and from now on ShowUserCertInit stays in its loop. */
    void startCall();
    /** Connects to the certificate-list processor. @return 0, else the code of CLP_Initalize or CLP_SetType */
    int connect();
    /** The user gives up. */
    void giveUp() { m_accepted = 0; }
    /** Overwrites the keys that a call left here: the caller's, the decrypted and the staged ones. */
    void forgetKeys();

    /** The medium that is listed next, or, of the removable disk, that was to be listed. */
    void turnTo(int medium) { m_medium = medium; }
    /** The removable disks could not be listed. */
    Outcome failDrives();
    /** Lists the certificates of a disk.
     *  @param drive  mount folder of the removable disk, else null
     *  @param pause  called again and again meanwhile; a listing that it gives up leaves no entry and ends with -1 */
    Outcome listDisk(int medium, char* drive, const ListingPause& pause = {});
    /** Takes the caller's certificate as the only entry, in the place of all others. @return as LoadMemoryCert() */
    int takeCallersCertificate();
    /** Takes a certificate from memory as the only entry. @return 0; 1115 not accepted; else the processor's code */
    int LoadMemoryCert(
        char* item1, int length1, char* item2, int length2, char* item3, int length3, char* item4, int length4);
    /** Takes the certificates of a PKCS#12 file as the entries. What finding the file ended with is for Step::Import;
     *  the outcome is that of the pair in it. */
    Outcome importFile(char* path, char* password);
    /** Keeps the password of an import: an imported certificate is confirmed with it. */
    void rememberPassword(std::string_view password);

    /** Whether a certificate has expired and the options keep such a one from being used. */
    bool isLocked(int row) const;
    /** What is told when @p row is selected. */
    Outcome select(int row) const;
    /** Takes the typed password for @p row (-1: none is selected) and accepts when it unlocks the certificate. */
    Outcome confirm(int row, std::string_view typed);
    /** Unlocks the certificate of @p row and stages the result.
     *  @return 0, else the processor's code; 1114 no signing key, or one too long for the result; 1001 no such row, or a
     *          locked one */
    Outcome unlock(int row, char* password);
    /** Hands the staged result out; the record is zero-filled first. Null is ignored. */
    void handOut(tagSELCERTINFO* result) const;

    SelectionOptions& options() { return m_options; }
    int language() const { return m_options.init.nLanguage; }
    void* processor() const { return m_processor.get(); }
    const Rows& rows() const { return m_rows; }
    /** What the processor keeps of @p row, which there must be, as far as the dialog uses it. */
    EntryRecord entry(int row) const;
    /** Verifying an entry may have changed its status. */
    void keepStatus(int row, const tagCERTINFO& entry);
    bool holds(int row) const { return row >= 0 && row < count(); }
    int count() const { return static_cast<int>(m_rows.size()); }
    int medium() const { return m_medium; }
    int lastResult() const { return m_lastResult; }
    /** What the last load failed with: "LoadCertDisk() m_nRv : 1115". */
    const char* lastError() const { return m_lastError; }
    /** 0 once ShowUserCert has run the dialog: ShowUserCertInit then stays in its loop. */
    int finishFlag() const { return m_finish; }
    /** -1 not decided yet, 0 given up, 1 a certificate was unlocked. */
    int acceptedFlag() const { return m_accepted; }
    bool isGivenUp() const { return m_accepted == 0; }
    /** Whether the user has chosen or given up. */
    bool isDecided() const { return m_accepted != undecided; }

private:
    const CertificateRow& at(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
    /** Keeps the code as the last result. */
    Outcome ended(Step step, int code) { return {m_lastResult = code, tellingOf(step, code)}; }
    Outcome expired(int row) const;
    int list(int medium, char* drive, const ListingPause& pause);
    /** @return the result of the last entry; -1 given up */
    int readEntries(int count, const ListingPause& pause);
    void CopyCertInfoList(int index, const tagCERTINFO& entry);
    void clearRows();
    /** Stages an entry. */
    void CopySelectCertInfo(const tagCERTINFO& entry);
    Outcome checkPassword(std::string_view typed) const;
    /** Decrypts the keys into the entry. @return the processor's code */
    int decryptKeys(int row, char* password, tagCERTINFO& entry, int& signKeyLength, int& kmKeyLength);
    Outcome stageWithRandom(int row, char* password, const tagCERTINFO& entry);

    static constexpr int undecided = -1;

    int m_lastResult;
    int m_finish;
    int m_medium;
    int m_accepted;
    sigildesk::ProcessorHandle m_processor;
    SelectionOptions m_options;
    std::vector<tagSELCERTINFO, SecretAllocator<tagSELCERTINFO>> m_stagingMemory =
        std::vector<tagSELCERTINFO, SecretAllocator<tagSELCERTINFO>>(1);
    tagSELCERTINFO& m_staging = m_stagingMemory.front();
    Rows m_rows; ///< of the current medium, in list order
    char m_lastError[1024];
    char m_rememberedPassword[1024]; ///< of the last successful import
};

} // namespace sigil
