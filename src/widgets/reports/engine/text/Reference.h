#pragma once

#include <QFont>
#include <QPaintDevice>

namespace LimeReport {

/// The paint device that all texts are laid out for, whatever they are painted on later: one dot
/// is 0.1 mm, glyphs are as wide as their outlines. So lines break alike on screens, in files and
/// on paper.
class Reference
{
public:
    static constexpr int DotsPerInch = 254;

    /// Of the calling thread.
    static QPaintDevice *device();
    static QFont font(const QFont &told);
};

} // namespace LimeReport
