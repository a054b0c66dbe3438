// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  CLoadDISK: certificates kept as files on the hard disk or on a removable disk.
 */
#pragma once

#include "certlist/cert_n_key.h"
#include "certlist/certificate_loader.h"
#include "certlist/entry.h"
#include "certlist/key_operations.h"
#include "certlist/pair_files.h"
#include "certlist/pair_reader.h"
#include "certlist/pkcs12_transfer.h"
#include "certlist/store_search.h"
#include "foundation/families.h"
#include "foundation/text_field.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

class CLoadDISK : public sigil::CertificateLoader {
public:
    /** Nothing is read yet. @param szHomePath  library folder with the settings files */
    CLoadDISK(int nLanguage, const char* szHomePath);

    void setMedium(int nMedium) { m_nMediaType = nMedium; }
    /** Mount folder of the removable disk, cut to pathCapacity. */
    void setDrive(const char* szPath);

    /** @name The list
     *  @{ */
    /** Number of places in the folder list of a family on the current medium; 0 for an unknown family. */
    int GetDirectoryCount(int nPKIType) const;
    /** Fills the folder list of a family. @return 0, also for an unknown family; 1111 no base folder */
    int GetCertDirectory(int nPKIType);
    /** What later listings call between folders and between files. */
    void setPause(sigil::ListingPause pause) { m_search.setPause(std::move(pause)); }
    /** Searches all families that the options name. @return 0; 1111; 1115 none found; 1123 none found, and a folder
     *  could not be read to its end (logged); -1 a pause gave it up */
    int LoadCertList();
    /** Forgets the list; its secrets are wiped. The memory is kept for the next list: most follow soon, and to have it
     *  from the system anew costs more than to fill it. */
    void ClearCertList();
    static void ClearCertInfo(tagCERTINFO* pEntry);
    int count() const { return m_nCount; }
    bool hasEntry(int nIndex) const { return nIndex >= 0 && nIndex < count(); }
    const sigil::PackedEntry& entry(int nIndex) const { return m_entries.at(static_cast<std::size_t>(nIndex)); }
    /** Reads the files of an entry and judges it. @return 0 keep; 1122 unreadable; 1502 not wanted */
    int ParsingCert(bool bCountOnly, tagCERTINFO* pEntry);
    /** Stores a judged entry; nothing for a null entry or an index outside the list. */
    void CopyCertInfo(int nIndex, const tagCERTINFO* pEntry);
    /** @} */

    /** @name Private keys of an entry
     *  An index outside the list gives 1001.
     *  @{ */
    /** Decrypts the keys and keeps them in the entry. @return 0; 1001; 1113; 1114; a toolkit code */
    int DecryptPriKey(int nIndex, char* szPassword, CBinary* pSignKey, CBinary* pKmKey);
    /** Keeps the identity random value in the entry. @return 0; 1001; 1118; 1119 */
    int GetPrikeyRandom(int nIndex, char* szPassword);
    /** @return 0; 1001; 1114; 1118; 1119; 1132 */
    int VerifyVID(int nIndex, char* szIdn, char* szPassword);
    /** Encrypts the key files anew. Nothing is undone when the second file fails. @return 0; 1001; 1113; 1123; 1124;
     *  1131 */
    int ChangePassword(int nIndex, char* szOldPassword, char* szNewPassword);
    /** Algorithm code with which a key is encrypted for a copy. @return 0; 1001; 1122 */
    int GetPrikeyAlg(const CBinary& certificate, int* pnAlg);
    /** @} */

    /** @name Import, export, copy, delete
     *  @{ */
    /** Reads a PKCS#12 file. @return 0; 1113; 1115; 1129; a toolkit code */
    int GetPKCS12(char* szPath, char* szPassword, sigil::CertNKey& out);
    /** Makes a PKCS#12 file of an entry whose keys were decrypted. @return 0; 1001; 1127; 1128 */
    int MakePKCS12(int nIndex, char* szPassword, CBinary& pfx);
    /** @return 0; 1001 nothing to write; a toolkit code */
    int WriteFile(const CBinary& data, char* szPath);
    /** Writes an exported file as a whole. @return 0; 1124 it could not be brought to the disk; a toolkit code */
    int writeExport(const CBinary& pfx, char* szPath);
    /** Writes the pairs of a copy, the keys encrypted anew: all of them, or those of before come back.
     *  @return 0; 1001 something is missing; 1124 */
    int writeCopy(char* szPassword, int nAlg, sigil::CertPaths& paths, const sigil::CertNKey& source);
    /** Writes a certificate and its key.
     *  @param bCertOnly   leave out the key
     *  @param bKeyAsIs    the key is encrypted already
     *  @return 0; 1001 something is missing; 1124 */
    int WriteCertNKey(bool bCertOnly, bool bKeyAsIs, char* szPassword, int nAlg, char* szCertPath, char* szKeyPath,
        const CBinary& certificate, const CBinary& key);
    /** Hands out an entry's certificates and keys: the key files as stored, or the decrypted keys. An index equal to
     *  the count passes the check, deliberately, and hands out nothing. @return 0; 1001 */
    int ReadCertNKey(bool bStoredKey, int nIndex, sigil::CertNKey& out);
    /** Reads a certificate and a key file. @return 0; 1123 */
    int ReadCertNKeyFromPath(char* szCertPath, char* szKeyPath, CBinary& certificate, CBinary& key);
    /** Deletes an entry's files. The first entry cannot be deleted. @return 0; 1001; 1113; 1125 */
    int DeleteCertNKey(int nIndex, char* szPassword);
    /** Forms the files that a copy of a certificate is written to; none for certificates of the private CA.
     *  @return 0; 1122 */
    int MakeCertPath(
        int nTargetMedia, const char* szTargetPath, const CBinary& certificate, sigil::CertPaths& paths);
    /** @} */

private:
    int countFamily(const sigil::Family& family, int& total);
    void fillList(const std::vector<const sigil::Family*>& found, int total);
    void search(const sigil::Family& family, bool countOnly, const sigil::StoreSearch::Keep& keep);
    template <class Operation>
    int onEntry(int nIndex, Operation operation);
    sigil::KeyOperations keys() { return {m_hToolkit, m_log}; }
    sigil::PairFiles files() { return {m_hToolkit, m_log}; }

    char m_szDrivePath[sigil::pathCapacity] = {};
    sigil::StoreSearch m_search{m_log};
    sigil::FileCheck m_check;                          ///< of the listing that goes on
    std::map<int, std::vector<std::string>> m_folders; // by family code; no list before the first search
    std::vector<sigil::PackedEntry> m_entries;         // the first m_nCount of them are the list
    int m_nCount = 0;
};
