#pragma once

#include <QVector>

namespace Editor {

/// A library that the programs are built with.
struct Library
{
    const char *package; ///< its development package in tools/dependencies.txt
    const char *name;
    const char *purpose; ///< Russian
    const char *licence; ///< by its SPDX name where it has one
};

/// All of them, by weight.
const QVector<Library> &Libraries();

} // namespace Editor
