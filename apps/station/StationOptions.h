#pragma once

#include "apps/common/process/ProjectOptions.h"

#include "nodes/values/Timestamp.h"

#include <optional>
#include <string>

namespace Station {

/// What the command line asks for.
struct StationOptions : Host::ProjectOptions
{
    std::string screenshots; ///< directory for pictures; "" runs the station normally
    int pictureWidth = 1920; ///< of the displays that pictures are taken as if for, pixels
    int pictureHeight = 1080;
    std::string fallback;   ///< directory for what cannot be written there; "" for the default
    std::string platform;   ///< Qt platform plug-in; "" lets Qt choose
    std::string statusFile; ///< file to keep the station's health in; "" for none
    Nodes::Timestamp generatedSpan = 0; ///< of the past to make up at start; 0: none
    bool hasStatusTexts = false;
    bool showsSplash = true;
    bool isSimulated = false;  ///< values are made up, no device is spoken to
    bool isUnattended = false; ///< nobody is there to answer questions at start

    /// Fills the options. A value is the exit code of a program that is done already: 0 after
    /// --help, --version and --hash-password, 2 after a wrong command line, which was explained on
    /// stderr.
    [[nodiscard]] std::optional<int> parse(int argc, char **argv);

    bool takesScreenshots() const { return !screenshots.empty(); }

private:
    void declareHistory(CLI::App &app);
};

} // namespace Station
