#include "archivers/convention/visible.h"
#include "archivers/infozip32/zip_core.h"

namespace {
archiver::infozip::ZipCore core;
}  // namespace

extern "C" {

// Declared by their types, so that a definition cannot differ from what callers bind.
ARCHIVER_VISIBLE archiver::zip_abi::fn::Init ZpInit;
ARCHIVER_VISIBLE archiver::zip_abi::fn::SetOptions ZpSetOptions;
ARCHIVER_VISIBLE archiver::zip_abi::fn::GetOptions ZpGetOptions;
ARCHIVER_VISIBLE archiver::zip_abi::fn::Archive ZpArchive;
ARCHIVER_VISIBLE archiver::zip_abi::fn::GetVersion ZpVersion;
ARCHIVER_VISIBLE archiver::fn::SetBool ZpSetUnicodeMode;

std::int32_t ARCHIVER_CALL ZpInit(const archiver::zip_abi::Callbacks* callbacks) { return core.init(callbacks); }
std::int32_t ARCHIVER_CALL ZpSetOptions(const archiver::zip_abi::Options* options) { return core.setOptions(options); }
archiver::zip_abi::Options ARCHIVER_CALL ZpGetOptions() { return core.options(); }
std::int32_t ARCHIVER_CALL ZpArchive(archiver::zip_abi::Command command) { return core.archive(command); }
void ARCHIVER_CALL ZpVersion(archiver::zip_abi::Version* version) { archiver::infozip::ZipCore::version(version); }
archiver::Bool ARCHIVER_CALL ZpSetUnicodeMode(archiver::Bool on) { return core.setUnicodeMode(on); }

}  // extern "C"
