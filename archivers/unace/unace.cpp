#include "archivers/convention/visible.h"
#include "archivers/unace/ace_core.h"

namespace {
archiver::unace::AceCore core;
}  // namespace

extern "C" {

// Declared by their types, so that a definition cannot differ from what callers bind.
ARCHIVER_VISIBLE archiver::ace_abi::fn::Open ACEOpenArchive;
ARCHIVER_VISIBLE archiver::ace_abi::fn::Close ACECloseArchive;
ARCHIVER_VISIBLE archiver::ace_abi::fn::ReadHeader ACEReadHeader;
ARCHIVER_VISIBLE archiver::ace_abi::fn::ProcessFile ACEProcessFile;
ARCHIVER_VISIBLE archiver::ace_abi::fn::SetPassword ACESetPassword;
ARCHIVER_VISIBLE archiver::fn::SetBool ACESetUnicodeMode;

archiver::ArchiveHandle ARCHIVER_CALL ACEOpenArchive(archiver::ace_abi::OpenArchiveData* data) {
    return core.open(data);
}
std::int32_t ARCHIVER_CALL ACECloseArchive(archiver::ArchiveHandle archive) { return core.close(archive); }
std::int32_t ARCHIVER_CALL ACEReadHeader(archiver::ArchiveHandle archive, archiver::ace_abi::HeaderData* header) {
    return core.readHeader(archive, header);
}
std::int32_t ARCHIVER_CALL ACEProcessFile(archiver::ArchiveHandle archive, std::int32_t operation,
                                          const char* destination) {
    return core.processFile(archive, operation, destination);
}
std::int32_t ARCHIVER_CALL ACESetPassword(archiver::ArchiveHandle archive, const char* password) {
    return core.setPassword(archive, password);
}
archiver::Bool ARCHIVER_CALL ACESetUnicodeMode(archiver::Bool on) { return core.setUnicodeMode(on); }

}  // extern "C"
