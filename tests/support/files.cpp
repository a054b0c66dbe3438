// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/support/files.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
    : m_path(fs::temp_directory_path() / "sigildesk-test-XXXXXX")
{
    if (!mkdtemp(m_path.data()))
        throw std::runtime_error("no temporary folder");
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::string TemporaryFolder::path(std::string_view name) const
{
    return name.empty() ? m_path : m_path + "/" + std::string(name);
}

std::string TemporaryFolder::write(std::string_view name, std::string_view content) const
{
    writeFile(path(name), content);
    return path(name);
}

std::string readFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const fs::path& path, std::string_view content)
{
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary).write(content.data(), std::ssize(content));
}
