#pragma once

namespace Editor {

class Workspace;

/// The steps from an empty project to a live value, as the menus and the page of first steps offer
/// them: each asks what it needs and tells what came of it. GUI thread.
namespace StepCommands {

void addSimulator(Workspace &workspace);
void addModbus(Workspace &workspace);
void addWindow(Workspace &workspace);
/// Header, buttons and pages of a whole station, see StationScreens.
void addScreens(Workspace &workspace);
void addPage(Workspace &workspace);
/// To the window or page that is open, else to the first one of the project.
void addReadings(Workspace &workspace);
/// Whether a station has a frame to show; where it has none, the user is offered to make one.
bool hasFrame(Workspace &workspace);
bool mayAddPage(Workspace &workspace);
bool mayEdit(Workspace &workspace);
bool mayAddReadings(Workspace &workspace);

} // namespace StepCommands

} // namespace Editor
