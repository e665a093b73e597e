#pragma once

#include <string>

namespace tarvendo {

class FileSystem;

/// Makes `text` the content of a file, whole or not at all: the text goes to a new file in the same
/// directory, which then replaces the old one by a rename. Where no such file can be made, or where
/// the name stands for something else than an ordinary file (a device, a link), the file is written
/// in place. False when the text did not arrive; the old file is then as it was, unless it was
/// written in place.
bool SaveWholeFile(FileSystem& files, const std::string& path, const std::string& text);

}  // namespace tarvendo
