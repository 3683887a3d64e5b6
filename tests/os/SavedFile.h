// What the tests of files share.
#pragma once

#include "TemporaryFolder.h"
#include "os/files.h"

inline std::string patternOf(std::size_t size) {
    std::string text(size, '\0');
    for (std::size_t i = 0; i < size; ++i) text[i] = static_cast<char>(i * 31 + (i >> 12));
    return text;
}

inline qx::Outcome save(const std::string& target, const std::string& content,
                        qx::os::Backup backup = qx::os::Backup::none) {
    auto file = qx::os::AtomicFile::create(target);
    if (!file) return qx::Outcome::failure(file.error());
    file->write(content);
    return file->commit(backup);
}
