#pragma once

#include "widgets/reports/engine/layout/BandImage.h"

#include <functional>
#include <utility>

namespace LimeReport {

struct TextStyle;

/// Divides a band between two sheets: texts between their lines, backgrounds and upright lines
/// anywhere, all else as a whole.
class BandSplit
{
public:
    /// Style of the text item with that number.
    using Styles = std::function<const TextStyle &(int number)>;

    /// The upper part is at most `height`; null items in it when nothing can stand there. With
    /// `isForced` something always does: what fits no sheet is made smaller, texts end in an
    /// ellipsis.
    static std::pair<BandImage, BandImage> split(const BandImage &image, double height,
                                                 const Styles &styles, bool isForced);
};

} // namespace LimeReport
