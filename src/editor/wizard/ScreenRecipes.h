#pragma once

#include "editor/wizard/NodeRecipe.h"

#include "nodes/model/links/NodeLink.h"

#include <QRect>
#include <QString>

namespace Editor {

/// Elements of station screens in the look they share: grey ground, dark bars, saturated colour
/// left to alarms. Values; pixels of the screen as drawn.
namespace ScreenRecipes {

constexpr int grid = 8;
constexpr int margin = 2 * grid;
constexpr int barHeight = 56; // header and row of buttons

QString ground();
QString bar();
QString ink();   // on the ground
QString paper(); // on a bar

/// An element of that kind, key as in project files.
NodeRecipe placed(const char *kind, const QString &name, const QRect &place);
NodeRecipe caption(const QString &text, const QRect &place, int size, const QString &color);
NodeRecipe button(const QString &text, const QRect &place, const Nodes::NodeLink &action);
/// Width that a bold text of that size needs to be read whole.
int widthOf(const QString &text, int size);
/// Where a heading stands at the left of a bar: as wide as its text but no wider than `most`.
QRect headingPlace(const QString &text, int most);
/// On two lines where its text is wider than its place.
NodeRecipe heading(const QString &text, const QRect &place);
/// `name`, or the same with a number where a child of the parent has it already.
QString freeName(const Nodes::NodeLink &parent, const QString &name);
/// The action that brings the page into the field.
NodeRecipe showPage(const QString &name, const Nodes::NodeLink &field, const Nodes::NodeLink &page);
/// Where the button of that number stands among `count` in a row of that width.
QRect buttonPlace(int number, int count, int rowWidth);

} // namespace ScreenRecipes

} // namespace Editor
