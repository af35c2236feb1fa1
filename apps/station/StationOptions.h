#pragma once

#include <map>
#include <optional>
#include <string>

namespace Station {

/// What the command line asks for.
struct StationOptions
{
    std::string project;     ///< file, or directory holding "project.xml"
    std::string screenshots; ///< directory for pictures; "" runs the station normally
    int pictureWidth = 1920; ///< of the displays that pictures are taken as if for, pixels
    int pictureHeight = 1080;
    std::string station;       ///< name of the project's station to be; "" for the first
    std::string dataDirectory; ///< "" for the default of the project
    std::string fallback;      ///< directory for what cannot be written there; "" for the default
    std::string platform;      ///< Qt platform plug-in; "" lets Qt choose
    std::string statusFile;    ///< file to keep the station's health in; "" for none
    bool hasStatusTexts = false;
    std::map<std::string, std::string> defines;
    bool showsSplash = true;
    bool isUnattended = false; ///< nobody is there to answer questions at start

    /// Fills the options. A value is the exit code of a program that is done already: 0 after
    /// --help, --version and --hash-password, 2 after a wrong command line, which was explained on
    /// stderr.
    [[nodiscard]] std::optional<int> parse(int argc, char **argv);

    bool takesScreenshots() const { return !screenshots.empty(); }
    /// Makes Qt use the platform asked for; before the application object is made.
    void applyPlatform() const;
};

} // namespace Station
