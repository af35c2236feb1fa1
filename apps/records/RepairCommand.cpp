#include "apps/records/RepairCommand.h"

#include "apps/common/process/StopRequest.h"
#include "apps/records/Message.h"
#include "apps/records/RecordsOptions.h"
#include "apps/records/StoreLocation.h"
#include "apps/records/TimeText.h"
#include "apps/records/VerifyCommand.h"

#include "nodes/archive/store/sqlite/SqliteSalvage.h"
#include "nodes/storage/DatabaseCopy.h"
#include "nodes/storage/DatabaseFiles.h"
#include "nodes/storage/SqliteDatabase.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <initializer_list>

namespace Records {

namespace {

namespace fs = std::filesystem;

using Nodes::ArchivedSignal;
using Nodes::Result;
using Nodes::Timestamp;

constexpr Timestamp second = 1000000;

std::string freshName(const std::string &file)
{
    std::string name = file + ".damaged-" + std::to_string(std::time(nullptr));
    std::error_code ignored;
    while (fs::exists(name, ignored))
        name += "-2";
    return name;
}

/// Whatever else was named by mistake stays where it is.
Result checkDatabase(const std::string &file)
{
    const std::string magic = "SQLite format 3";
    std::string begin(magic.size(), '\0');
    std::ifstream(file, std::ios::binary).read(begin.data(), std::streamsize(begin.size()));
    if (begin != magic)
        return Result(Result::WrongType,
                      "\"" + file +
                          "\" is no database, nothing can be read of it; it stays as it is");
    return Nodes::SqliteSalvage::IsOurs(file)
               ? Result()
               : Result(Result::WrongType,
                        "\"" + file +
                            "\" is no archive of this version of the program; it "
                            "stays as it is");
}

Result checkUnused(const std::string &file)
{
    const fs::path path(file);
    for (const auto &found : Nodes::DatabaseFiles(path.parent_path().string()).List()) {
        if (found.path == path.filename().string() && found.isInUse)
            return Result(Result::Refused, "\"" + file +
                                               "\" is so damaged that it has to be made anew, and "
                                               "a station has it open; end that and repair again");
    }
    return Result();
}

/// The file as it is, where its pages are too damaged for the database to copy them.
Result copyBytes(const std::string &file, const std::string &copy)
{
    const Result isUnused = checkUnused(file);
    if (!isUnused)
        return isUnused;
    for (const char *companion : {"", "-wal"}) {
        std::error_code error;
        if (fs::exists(file + companion, error))
            fs::copy_file(file + companion, copy + companion, error);
        if (error)
            return Result(Result::StorageError,
                          "cannot copy \"" + file + companion + "\": " + error.message());
    }
    return Result();
}

} // namespace

bool RepairCommand::run()
{
    Nodes::ArchiveFindings findings;
    Result result = m_archive.connect(m_options);
    if (!Message::check(result))
        return false;
    const Result verified = m_archive.reader().Verify(findings, Host::StopRequest::flag());
    if (verified == Result::Cancelled)
        return Message::check(verified);
    if (verified && findings.empty()) {
        std::puts("sound: nothing to repair");
        return true;
    }
    // A file whose pages cannot be read is what is to be mended; a server that is away is not.
    const bool isFile = !StoreLocation::fileOf(m_archive.location()).empty();
    result = verified;
    if (!verified && isFile)
        result = checkDatabase(StoreLocation::fileOf(m_archive.location()));
    if (!result)
        return Message::check(result);
    if (result)
        result = keepCopy();
    if (result)
        result = mend();
    if (result && isSound())
        return true;
    if (!isFile || Host::StopRequest::isMade())
        return Message::check(result);
    if (!result)
        Message::tell(result.GetDetail());
    return Message::check(salvage()) && isSound();
}

Result RepairCommand::keepCopy()
{
    const std::string file = StoreLocation::fileOf(m_archive.location());
    if (file.empty())
        return Result();
    const std::string copy = freshName(file);
    const fs::path path(file);
    std::unique_ptr<Nodes::DatabaseCopy> copying;
    Result copied = Nodes::DatabaseFiles(path.parent_path().string())
                        .MakeCopy(path.filename().string(), copy, copying);
    if (copied) {
        copying->ObeyFlag(Host::StopRequest::flag());
        copied = copying->Run();
    }
    if (!copied && copied != Result::Cancelled) {
        m_archive.disconnect();
        copied = copyBytes(file, copy);
        if (copied)
            copied = m_archive.connect(m_options);
    }
    if (copied)
        std::printf("the archive as it was is kept in \"%s\"\n", copy.c_str());
    return copied;
}

Result RepairCommand::mend()
{
    Nodes::ArchiveFindings done;
    const Result result = m_archive.reader().Repair(done, Host::StopRequest::flag());
    for (const Nodes::ArchiveFinding &finding : done)
        std::printf("%s\n", VerifyCommand::describe(finding).c_str());
    return result;
}

bool RepairCommand::isSound()
{
    Nodes::ArchiveFindings findings;
    Result result = m_archive.connect(m_options);
    if (result)
        result = m_archive.reader().Verify(findings, Host::StopRequest::flag());
    for (const Nodes::ArchiveFinding &finding : findings)
        std::printf("still wrong: %s\n", VerifyCommand::describe(finding).c_str());
    if (result && findings.empty())
        std::puts("sound now");
    return Message::check(result) && findings.empty();
}

Result RepairCommand::salvage()
{
    const std::string file = StoreLocation::fileOf(m_archive.location());
    m_archive.disconnect();
    for (const Result &isFit : {checkDatabase(file), checkUnused(file)}) {
        if (!isFit)
            return isFit;
    }
    const std::string aside = Nodes::SqliteDatabase::SetAside(file);
    if (aside.empty())
        return Result(Result::StorageError, "cannot rename \"" + file + "\"");
    std::printf("the archive as it was is now \"%s\"\n", aside.c_str());
    std::unique_ptr<Nodes::ArchiveReader> damaged;
    std::vector<ArchivedSignal> signals;
    Result result = Nodes::ArchiveReaders().Make(aside, damaged);
    if (result)
        result = damaged->ListSignals(signals);
    if (!result)
        return Result(result.GetType(), "nothing can be read of it: " + result.GetDetail());
    result = m_writer.open(m_archive.location());
    for (std::size_t i = 0; result && i < signals.size(); ++i)
        result = takeOver(*damaged, signals[i]);
    const Result finished = m_writer.finish();
    std::printf("%llu samples were recovered, with %llu places that could not be read\n",
                static_cast<unsigned long long>(m_writer.written()),
                static_cast<unsigned long long>(m_unreadable));
    return result ? finished : result;
}

/// Where it cannot be read it is tried again a little later, and then later and later.
Result RepairCommand::takeOver(Nodes::ArchiveReader &damaged, const ArchivedSignal &signal)
{
    Timestamp from = 0;
    for (Timestamp step = second; from <= signal.last;) {
        Result written;
        const Timestamp begin = from;
        const Result read = damaged.Visit(
            signal.key, from, signal.last,
            [&](const Nodes::SampleRun &run) {
                written = write(signal, run);
                from = run.times.back() + 1;
                return bool(written);
            },
            Host::StopRequest::flag());
        if (read || !written || read == Result::Cancelled)
            return written ? read : written;
        if (from > begin)
            step = second;
        std::printf("signal %lu \"%s\": cannot be read at %s: %s\n", signal.key.source.node,
                    signal.key.source.name.c_str(),
                    TimeText::format(std::max(from, signal.first)).c_str(),
                    read.GetDetail().c_str());
        ++m_unreadable;
        from = std::max(from, signal.first) + step;
        step *= 4;
    }
    return Result();
}

Result RepairCommand::write(const ArchivedSignal &signal, const Nodes::SampleRun &run)
{
    const std::size_t begin = signal.IsGenerated() ? run.LowerBound(signal.generatedFrom) : 0;
    const std::size_t end = signal.IsGenerated() ? run.LowerBound(signal.generatedTo + 1) : 0;
    Nodes::SampleRun made, measured;
    made.Append(run, begin, end);
    measured.Append(run, 0, begin);
    measured.Append(run, end, run.Size());
    const Result result = m_writer.write(signal.key, measured, false);
    return result ? m_writer.write(signal.key, made, true) : result;
}

} // namespace Records
