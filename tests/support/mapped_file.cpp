// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/support/mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <stdexcept>

MappedFile::MappedFile(const std::string& path)
{
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat state { };
    if (fstat(file, &state) == 0)
        m_length = static_cast<std::size_t>(state.st_size);
    m_bytes = mmap(nullptr, m_length + 1, PROT_READ, MAP_SHARED, file, 0);
    close(file);
    if (m_bytes == MAP_FAILED)
        throw std::runtime_error("cannot map " + path);
    m_record = {static_cast<unsigned char*>(m_bytes), static_cast<int>(m_length)};
}

MappedFile::~MappedFile() { munmap(m_bytes, m_length + 1); }
