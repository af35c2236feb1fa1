#pragma once

#include "nodes/journal/JournalLink.h"
#include "nodes/values/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Records {

/// What the command line asks for.
struct RecordsOptions
{
    enum class Command {
        Info,
        Verify,
        Repair,
        Import,
        Export,
        Generate,
        JournalVerify,
        JournalHead,
        JournalExport
    };

    Command command = Command::Info;
    std::string store;   ///< data directory, file or connection string
    std::string project; ///< file or directory of a project, or its uuid; "" where none is named
    std::string station; ///< name or id; "" where none is named
    std::vector<unsigned long> signals; ///< none: all

    Nodes::Timestamp from = 0;                ///< 0: from the first sample on
    std::optional<Nodes::Timestamp> to;       ///< without: to the last sample, or to now
    std::size_t points = 0;                   ///< 0: every sample
    std::vector<Nodes::JournalLink> receipts; ///< that the journal has to fit
    std::string output;                       ///< "": standard output
    std::string input;                        ///< "-": standard input
    bool skipsBad = false;
    bool isGenerated = false; ///< what is imported was made up
    bool isJson = false;
    bool allSignals = false; ///< of the project, archived or not
    Nodes::Timestamp span = 0;
    Nodes::Timestamp interval = 0; ///< 0: by the span
    std::uint64_t seed = 1;

    /// Fills the options. A value is the exit code of a program that is done already: 0 after
    /// --help and --version, UsageError after a wrong command line, which was explained on stderr.
    [[nodiscard]] std::optional<int> parse(int argc, char **argv);

    static constexpr int UsageError = 2;

private:
    CLI::App *addCommand(CLI::App &parent, const char *name, const char *text, Command value);
    void declareArchive(CLI::App &archive);
    void declareJournal(CLI::App &journal);
    void declareImport(CLI::App &archive);
    void declareExport(CLI::App &archive);
    void declareGenerate(CLI::App &archive);
    void addHome(CLI::App &of, const char *projectText);
    void addSignals(CLI::App &of, const char *text);
};

} // namespace Records
