// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/keys/storage.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/file.h"
#include "toolkit/engine/keys/key_file.h"
#include "toolkit/engine/x509/certificate.h"

#include <filesystem>

namespace toolkit {

Bytes readCertificate(const Library& library, const std::string& path)
{
    return Certificate(library, readFile(path)).der();
}

void writeCertificate(const Library& library, const std::string& path, View certificate)
{
    writeFile(path, Certificate(library, certificate).der());
}

Secret readPrivateKey(const Library& library, const std::string& path, std::string_view password)
{
    return decryptKeyFile(library, readFile(path), password);
}

void writePrivateKey(
    const Library& library, int algorithm, const std::string& path, std::string_view password, View keyInfo)
{
    writeFile(path, encryptKeyFile(library, algorithm, keyInfo, password));
}

void deletePrivateKey(const Library& library, const std::string& path, std::string_view password)
{
    readPrivateKey(library, path, password);
    deleteFile(path);
}

void loadMedium(Context& context, std::string_view folder)
{
    std::error_code ignored;
    require(folder.empty() || std::filesystem::is_directory(folder, ignored), SIGIL_TK_FILE_NOT_FOUND, folder);
    context.mediaFolder = folder;
}

} // namespace toolkit
