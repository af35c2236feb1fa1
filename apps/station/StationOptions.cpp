#include "apps/station/StationOptions.h"

#include "apps/common/process/SpanText.h"

#include <CLI/CLI.hpp>

#include <cstdio>

namespace Station {

namespace {

constexpr int largestScreen = 16384; // pixels a side

/// WIDTHxHEIGHT; false for anything else.
bool readSize(const std::string &text, int &width, int &height)
{
    char rest = 0;
    int w = 0;
    int h = 0;
    if (std::sscanf(text.c_str(), "%dx%d%c", &w, &h, &rest) != 2)
        return false;
    if (w < 1 || h < 1 || w > largestScreen || h > largestScreen)
        return false;
    width = w;
    height = h;
    return true;
}

} // namespace

void StationOptions::declareHistory(CLI::App &app)
{
    app.add_option_function<std::string>(
           "--generate-history",
           [this](const std::string &text) {
               const auto span = Host::parseSpan(text);
               if (!span)
                   throw CLI::ValidationError("--generate-history", Host::spanAdvice(text));
               generatedSpan = *span;
           },
           "make up a past of that length (12h, 30d, 1y) for archived signals that have none, "
           "marked as generated")
        ->type_name("SPAN");
}

std::optional<int> StationOptions::parse(int argc, char **argv)
{
    CLI::App app("Operator station: shows and runs a project");
    declare(app);
    bool hidesSplash = false;
    CLI::Option *pictures =
        app.add_option("--screenshots", screenshots,
                       "open every window, save pictures to this directory and exit: 0 all are "
                       "fine, 1 a window failed, 3 values were missing")
            ->type_name("DIR");
    app.add_option_function<std::string>(
           "--screen-size",
           [this](const std::string &text) {
               if (!readSize(text, pictureWidth, pictureHeight))
                   throw CLI::ValidationError("--screen-size",
                                              "\"" + text + "\" is no size like 1366x768");
           },
           "size of the displays that pictures are taken for (default: 1920x1080)")
        ->type_name("WIDTHxHEIGHT")
        ->needs(pictures);
    app.add_option("--platform", platform, "Qt platform plug-in (xcb, wayland, offscreen, ...)")
        ->type_name("NAME");
    app.add_option("--fallback", fallback,
                   "directory on another disk for records that cannot be written to that one")
        ->type_name("DIR");
    CLI::Option *status = app.add_option("--status-file", statusFile,
                                         "file to keep the station's health in, for supervisors")
                              ->type_name("FILE");
    app.add_flag("--status-texts", hasStatusTexts, "tell in that file what each value reads")
        ->needs(status);
    declareHistory(app);
    app.add_flag("--simulate", isSimulated,
                 "speak to no device: show made-up values, marked as such, and keep records of "
                 "their own");
    app.add_flag("--no-splash", hidesSplash, "show no progress while the project loads");
    app.add_flag("--unattended", isUnattended, "do not wait for answers at start");
    app.set_version_flag("--version", STATION_VERSION);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? 0 : UsageError;
    }
    showsSplash = !hidesSplash;
    isUnattended = isUnattended || takesScreenshots();
    return std::nullopt;
}

} // namespace Station
