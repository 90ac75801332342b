#pragma once
#include <memory>

#include "archivers/commands/command.h"

namespace archiver {

/// The words of UnZip32: listings in three forms (UnZipForm), and lines such as "  inflating: docs/a.txt" for members.
/// Lines end with LF.
std::unique_ptr<CommandTexts> unZipTexts();

}  // namespace archiver
