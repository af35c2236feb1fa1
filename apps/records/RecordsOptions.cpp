#include "apps/records/RecordsOptions.h"

#include "apps/common/process/SpanText.h"
#include "apps/records/JournalReceipt.h"
#include "apps/records/TimeText.h"

#include <CLI/CLI.hpp>

#include <string>

namespace Records {

namespace {

using Nodes::Timestamp;

constexpr const char *timeHelp = "ISO 8601, like 2026-11-22T09:00:00+03:00; UTC without an offset; "
                                 "a date alone is its first moment";

Timestamp momentOf(const std::string &option, const std::string &text)
{
    Timestamp time = 0;
    const Nodes::Result parsed = TimeText::parse(text, TimeText::Zone::OrUtc, time);
    if (!parsed)
        throw CLI::ValidationError(option, parsed.GetDetail());
    return time;
}

void addMoment(CLI::App &command, const char *name, const std::string &text,
               const std::function<void(Timestamp)> &take)
{
    const std::string option = name;
    command
        .add_option_function<std::string>(
            option, [option, take](const std::string &given) { take(momentOf(option, given)); },
            text)
        ->type_name("TIME");
}

void addSpan(CLI::App &command, const char *name, const std::string &text, Timestamp &span)
{
    const std::string option = name;
    command
        .add_option_function<std::string>(
            option,
            [option, &span](const std::string &given) {
                const auto length = Host::parseSpan(given);
                if (!length)
                    throw CLI::ValidationError(option, Host::spanAdvice(given));
                span = *length;
            },
            text)
        ->type_name("SPAN");
}

} // namespace

CLI::App *RecordsOptions::addCommand(CLI::App &parent, const char *name, const char *text,
                                     Command value)
{
    CLI::App *added = parent.add_subcommand(name, text);
    added
        ->add_option("STORE", store,
                     "data directory of a station, file, or connection string "
                     "(postgresql://user@host/database)")
        ->required()
        ->type_name("");
    added->callback([this, value] { command = value; });
    return added;
}

void RecordsOptions::addHome(CLI::App &of, const char *projectText)
{
    of.add_option("--project", project, projectText)->type_name("PROJECT");
    of.add_option("--station", station, "name or id of the project's station")
        ->type_name("STATION");
}

void RecordsOptions::addSignals(CLI::App &of, const char *text)
{
    of.add_option("--signal", signals, text)
        ->type_name("ID")
        ->check(CLI::PositiveNumber)
        ->allow_extra_args(false);
}

void RecordsOptions::declareImport(CLI::App &archive)
{
    CLI::App *import = addCommand(archive, "import",
                                  "Takes the samples of a table into the archive", Command::Import);
    import->footer("The first line of the table is time,signal,value,quality. Rows may come in any "
                   "order; what the archive has already stays as it is.");
    import->add_option("FILE", input, "table of samples; - for standard input")
        ->required()
        ->type_name("");
    addHome(*import,
            "whose samples they are: file or directory of the project, or its uuid; needed "
            "where the archive does not tell");
    import->add_flag("--skip-bad", skipsBad,
                     "pass over lines that are no good (exit code 1 then) instead of stopping");
    import->add_flag("--generated", isGenerated, "mark the samples as made up");
}

void RecordsOptions::declareExport(CLI::App &archive)
{
    CLI::App *rows =
        addCommand(archive, "export", "Writes samples as a table, oldest first", Command::Export);
    rows->footer("Rows: time,signal,value,quality; with --points: begin,end,signal,min,max,first,"
                 "last,mean,count,quality. Of equal times the lower id comes first.");
    addSignals(*rows, "id of a signal; may be repeated (default: all)");
    addMoment(*rows, "--from", "first moment: " + std::string(timeHelp),
              [this](Timestamp time) { from = time; });
    addMoment(*rows, "--to", "last moment, likewise; with --points the end of the last bucket",
              [this](Timestamp time) { to = time; });
    rows->add_option("--points", points, "one row for each of so many equal parts of the time")
        ->check(CLI::Range(std::size_t(1), std::size_t(100000000)))
        ->type_name("N");
    rows->add_option("-o,--output", output, "file to write (default: standard output)")
        ->type_name("FILE");
    addHome(*rows,
            "whose signals, where the archive has those of several: uuid, file or directory");
}

void RecordsOptions::declareGenerate(CLI::App &archive)
{
    CLI::App *generate = addCommand(archive, "generate",
                                    "Makes up a plausible past, marked as generated, where the "
                                    "archive has nothing",
                                    Command::Generate);
    addHome(*generate, "file or directory of the project whose signals get a past");
    generate->get_option("--project")->required();
    addSignals(*generate, "id of a signal; may be repeated (default: those that are archived)");
    generate->add_flag("--all", allSignals, "all signals of the station, archived or not");
    addSpan(*generate, "--span", "how far back: 12h, 30d, 1y, ... (default: 30d)", span);
    addMoment(*generate, "--to", "where it ends (default: now)",
              [this](Timestamp time) { to = time; });
    addSpan(*generate, "--every", "from sample to sample (default: by the span)", interval);
    generate->add_option("--seed", seed, "another number makes another past (default: 1)")
        ->type_name("N");
}

void RecordsOptions::declareArchive(CLI::App &archive)
{
    archive.require_subcommand(1);
    CLI::App *info =
        addCommand(archive, "info", "Tells what the archive holds of each signal", Command::Info);
    addHome(*info, "also tells which signals are no longer in this project: file or directory");
    info->add_flag("--json", isJson, "for programs");
    CLI::App *verify = addCommand(archive, "verify", "Looks at everything and names what is wrong",
                                  Command::Verify);
    verify->add_flag("--json", isJson, "for programs");
    addCommand(archive, "repair",
               "Recovers what can be read of a damaged archive; the damaged one is kept aside",
               Command::Repair);
    declareImport(archive);
    declareExport(archive);
    declareGenerate(archive);
}

void RecordsOptions::declareJournal(CLI::App &journal)
{
    journal.require_subcommand(1);
    CLI::App *verify = addCommand(journal, "verify",
                                  "Recomputes the chain of hashes and names the first row that is "
                                  "not as it was written",
                                  Command::JournalVerify);
    verify
        ->add_option_function<std::vector<std::string>>(
            "--receipt",
            [this](const std::vector<std::string> &texts) {
                for (const std::string &text : texts) {
                    const Nodes::Result parsed =
                        JournalReceipt::parse(text, receipts.emplace_back());
                    if (!parsed)
                        throw CLI::ValidationError("--receipt", parsed.GetDetail());
                }
            },
            "what \"records journal head\" printed at some time; may be repeated")
        ->type_name("ROW:HASH")
        ->allow_extra_args(false);
    addCommand(journal, "head",
               "Prints number and hash of the last row: a receipt to keep elsewhere, against which "
               "the journal can be verified later",
               Command::JournalHead);
    CLI::App *rows = addCommand(journal, "export",
                                "Writes the entries of a time as a table, with the hashes that "
                                "prove them",
                                Command::JournalExport);
    addMoment(*rows, "--from", "first moment: " + std::string(timeHelp),
              [this](Timestamp time) { from = time; });
    addMoment(*rows, "--to", "last moment, likewise", [this](Timestamp time) { to = time; });
    rows->add_option("-o,--output", output, "file to write (default: standard output)")
        ->type_name("FILE");
}

std::optional<int> RecordsOptions::parse(int argc, char **argv)
{
    CLI::App app("Archive and journal of an operator station from the command line");
    app.footer("Exit code: 0 all was done, 1 something was not, 2 wrong command line.\n"
               "Everything works beside a running station unless it says otherwise.");
    app.set_version_flag("--version", RECORDS_VERSION);
    app.require_subcommand(1);
    declareArchive(*app.add_subcommand("archive", "Samples of signals"));
    declareJournal(*app.add_subcommand("journal", "Journal of events"));
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? 0 : UsageError;
    }
    return std::nullopt;
}

} // namespace Records
