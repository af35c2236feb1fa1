// Rules on where elements stand.
#include "editor/review/ReviewRules.h"
#include "editor/review/ReviewScreen.h"
#include "editor/review/ReviewTexts.h"

#include <algorithm>

namespace Editor {

using Nodes::NodeLink;

namespace {

void addPlace(const ReviewElement &element, const QPoint &place, QVector<ReviewChange> &mend)
{
    using Prop = Nodes::GeometryProp;
    if (place.x() != element.rect.x())
        mend.append({NodeLink(element.node), Prop::X, place.x()});
    if (place.y() != element.rect.y())
        mend.append({NodeLink(element.node), Prop::Y, place.y()});
}

/// As little as needed; nothing for one that is larger than the screen.
QVector<ReviewChange> movedInto(const QRect &screen, const ReviewElement &element)
{
    const QSize most = screen.size() - element.rect.size();
    QVector<ReviewChange> mend;
    if (most.isValid())
        addPlace(
            element,
            {qBound(0, element.rect.x(), most.width()), qBound(0, element.rect.y(), most.height())},
            mend);
    return mend;
}

/// The nearest line, but none that leads out of the screen, where `most` is the last place inside.
int onGrid(int place, int grid, int most)
{
    const int nearest = qRound(place / double(grid)) * grid;
    return nearest > most && place <= most ? nearest - grid : nearest;
}

} // namespace

void checkPlaces(const ReviewScreen &screen, ReviewFindings &findings)
{
    const QRect all(QPoint(), screen.size());
    for (const ReviewElement &element : screen.elements()) {
        if (all.contains(element.rect))
            continue;
        const bool isGone = !all.intersects(element.rect);
        findings.append({isGone ? ReviewFinding::Fault : ReviewFinding::Warning,
                         NodeLink(element.node),
                         isGone ? QStringLiteral("Элемент целиком за краем экрана: его не видно.")
                                : QStringLiteral("Элемент выходит за край экрана и обрезан."),
                         QStringLiteral("Передвиньте его или увеличьте экран (%1×%2).")
                             .arg(all.width())
                             .arg(all.height()),
                         movedInto(all, element)});
    }
}

void checkOverlaps(const ReviewScreen &screen, ReviewFindings &findings)
{
    constexpr int touching = 3; // pixels: frames may lie on each other
    QVector<ReviewElement> texts;
    for (const ReviewElement &element : screen.elements()) {
        const QRect place = ReviewTexts::placeOf(*element.node, element.rect);
        if (!place.isEmpty())
            texts.append({element.node, place});
    }
    std::stable_sort(texts.begin(), texts.end(),
                     [](const ReviewElement &a, const ReviewElement &b) {
                         return a.rect.left() < b.rect.left();
                     });
    for (int i = 0; i < texts.size(); ++i) {
        for (int k = i + 1; k < texts.size() && texts[k].rect.left() <= texts[i].rect.right();
             ++k) {
            const QRect both = texts[i].rect & texts[k].rect;
            if (both.width() <= touching || both.height() <= touching)
                continue;
            findings.append({ReviewFinding::Warning, NodeLink(texts[k].node),
                             QStringLiteral("Текст накладывается на «%1» (%2×%3 пикс.).")
                                 .arg(QString::fromStdString(texts[i].node->GetName()))
                                 .arg(both.width())
                                 .arg(both.height()),
                             QStringLiteral("Раздвиньте элементы.")});
        }
    }
}

void checkGrid(const ReviewScreen &screen, ReviewFindings &findings)
{
    constexpr int grid = 8; // pixels
    int count = 0;
    const Nodes::BasicWidget *first = nullptr;
    QVector<ReviewChange> mend;
    for (const ReviewElement &element : screen.elements()) {
        if (element.rect.x() % grid == 0 && element.rect.y() % grid == 0)
            continue;
        if (!first)
            first = element.node;
        const QSize most = screen.size() - element.rect.size();
        addPlace(element,
                 {onGrid(element.rect.x(), grid, most.width()),
                  onGrid(element.rect.y(), grid, most.height())},
                 mend);
        ++count;
    }
    if (first)
        findings.append({ReviewFinding::Hint, NodeLink(first),
                         QStringLiteral("Не на сетке %1 пикс., элементов: %2 из %3; этот первый.")
                             .arg(grid)
                             .arg(count)
                             .arg(screen.elements().size()),
                         QStringLiteral("Выровняйте их по сетке: ровные ряды читаются быстрее."),
                         mend});
}

} // namespace Editor
