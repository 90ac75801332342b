#include "archivers/formats/tar/byte_stream.h"

#include "archivers/formats/tar/file_stream.h"
#include "archivers/formats/tar/filter_stream.h"
#include "archivers/formats/tar/gzip_stream.h"

namespace archiver::tar {

std::unique_ptr<ByteStream> makeStream(const InputFile& file, Compression compression) {
    switch (compression) {
        case Compression::kGzip:
            return std::make_unique<GzipStream>(file);
        case Compression::kCompress:
        case Compression::kBzip2:
            return std::make_unique<FilterStream>(file, compression);
        case Compression::kNone:
            break;
    }
    return std::make_unique<FileStream>(file);
}

}  // namespace archiver::tar
