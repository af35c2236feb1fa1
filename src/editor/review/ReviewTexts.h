#pragma once

#include <QFont>
#include <QRect>
#include <QSize>
#include <QStringList>

#include <optional>

class QFontMetrics;

namespace Nodes {
class BasicWidget;
}

namespace Editor {

/// Texts that an element may come to show, and the room they have. GUI thread.
class ReviewTexts
{
public:
    /// Of labels, buttons and symbols; with a signal those of both ends of its range, or of both
    /// of its values, and of all states. Empty for elements that lay out their text themselves.
    static QStringList of(const Nodes::BasicWidget &element);
    /// Nothing for an element without texts.
    static std::optional<QFont> fontOf(const Nodes::BasicWidget &element);
    /// Pixels for the text along its lines and across them.
    static QSize roomIn(const Nodes::BasicWidget &element, QSize size);
    /// Whether its texts run up or down.
    static bool isUpright(const Nodes::BasicWidget &element);
    /// Where the largest of its texts stands; empty for an element without texts and for one that
    /// is hidden while no state matches, as signs over others are.
    static QRect placeOf(const Nodes::BasicWidget &element, const QRect &rect);
    static QSize needed(const Nodes::BasicWidget &element, const QFontMetrics &metrics,
                        const QString &text, QSize room);
};

} // namespace Editor
