#include "archivers/unpacking/unpacker.h"

#include <memory>
#include <utility>

#include "archivers/unpacking/unpacking.h"

namespace archiver {
namespace {

template <class Work>
UnpackSummary guarded(const Work& work) {
    try {
        return work();
    } catch (...) {
        UnpackSummary summary;
        summary.code = kEnoughMemory;  // nothing below throws for any other reason
        return summary;
    }
}

bool isFolder(const Member& member) {
    return member.kind == MemberKind::kFolder || (member.attributes & attribute::kFolder) != 0;
}

bool hasData(const Member& member) {
    if (isFolder(member)) return false;
    return member.kind == MemberKind::kFile || (member.kind == MemberKind::kSymbolicLink && member.linkTarget.empty());
}

/// Reads the chosen members' data.
UnpackSummary readMembers(MemberRun& run, MemberOutcome outcome) {
    Member member;
    while (run.next(member)) {
        if (isFolder(member)) continue;
        auto job = std::make_unique<MemberJob>();
        job->member = std::move(member);
        job->outcome = outcome;
        if (!run.begin(job->member, {})) break;
        if (hasData(job->member)) {
            run.process(std::move(job));
        } else {
            run.tell(std::move(job));  // its header is all there is of it
        }
    }
    return run.summary();
}

}  // namespace

UnpackSummary unpackMembers(ArchiveReader& reader, const MemberFilter& chosen, const UnpackOptions& options,
                            std::string_view password, TargetSystem& system, UnpackEvents& events) {
    return guarded([&] { return Unpacking(reader, chosen, options, password, system, events).run(); });
}

UnpackSummary testMembers(ArchiveReader& reader, const MemberFilter& chosen, std::string_view password,
                          UnpackEvents& events) {
    return guarded([&] {
        MemberRun run(reader, chosen, password, 0, events);
        if (reader.facts().listedByHeaders) {
            MemberWalk::Totals totals;
            if (const ReturnCode code = run.walk().count(hasData, totals); code != kOk) {
                run.end(code);
                return run.summary();
            }
            run.meter().setTotal(totals.bytes);
        }
        return readMembers(run, MemberOutcome::kTested);
    });
}

UnpackSummary printMembers(ArchiveReader& reader, const MemberFilter& chosen, std::string_view password,
                           UnpackEvents& events, const DataSink& sink) {
    return guarded([&] {
        MemberRun run(reader, chosen, password, 1, events);
        run.around().output = &sink;
        run.proveFirst();
        return readMembers(run, MemberOutcome::kTested);
    });
}

}  // namespace archiver
