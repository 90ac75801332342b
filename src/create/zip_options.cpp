#include "create/zip_options.h"

#include <utility>

namespace tovar {

ZipOptions::ZipOptions(const ZipCommand& command, std::string rootFolder, std::string temporaryFolder)
    : rootFolder_(std::move(rootFolder)), temporaryFolder_(std::move(temporaryFolder)) {
    record_.date = "";
    record_.rootFolder = rootFolder_.c_str();
    record_.temporaryFolder = temporaryFolder_.c_str();
    record_.encrypt = command.encrypt;
    record_.systemAndHidden = command.systemAndHidden;
    record_.comment = command.comment;
    record_.recurse = command.recurse;
    record_.verbose = command.verbose;
    record_.move = command.action == ZipAction::Move;
    record_.deleteEntries = command.action == ZipAction::Delete;
    record_.update = command.action == ZipAction::Update;
    record_.freshen = command.action == ZipAction::Freshen;
    record_.repair = command.action == ZipAction::Repair;
    record_.level = command.level;
}

}  // namespace tovar
