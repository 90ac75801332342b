#include "shell/list_file.h"

namespace tovar {
namespace {

constexpr SystemErrorCode kNotFound = 2;    ///< in Windows and elsewhere
constexpr SystemErrorCode kNotWritten = 5;  ///< access is denied in Windows, an input or output error elsewhere
constexpr std::size_t kLineEnd = 2;         ///< bytes that are written behind the text

}  // namespace

ListFile::ListFile(std::wstring_view text, const TextCodec& codec, WorkFolder& workFolder, FileSystem& files)
    : workFolder_(workFolder), files_(files), path_(workFolder.WriteTempListFile(text, codec)) {
    if (path_.empty()) throw SystemError(kNotFound);
    const auto bytes = codec.encode(text);
    const auto status = files.status(path_);
    if (bytes && status && status->size == bytes->size() + kLineEnd) return;
    files.deleteFile(path_);
    throw SystemError(kNotWritten);
}

ListFile::~ListFile() { files_.deleteFile(path_); }

}  // namespace tovar
