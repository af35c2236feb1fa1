#include "editor/compare/PicturePair.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/visual/BasicWidget.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

namespace {

// Dark enough for the white sign on them.
const QColor addedColor(0, 110, 60);
const QColor removedColor(176, 32, 32);
const QColor movedColor(30, 80, 160);
const QColor changedColor(150, 85, 0);

constexpr int signRoom = 32; // pixels around what is shown

unsigned long idOn(int side, const Nodes::NodeDifference &difference)
{
    return side == 0 ? difference.before : difference.after;
}

PictureMark markOf(const Nodes::NodeDifference &difference)
{
    PictureMark mark;
    if (difference.isAdded) {
        mark.sign = QStringLiteral("+");
        mark.color = addedColor;
    } else if (difference.isRemoved) {
        mark.sign = QStringLiteral("−");
        mark.color = removedColor;
    } else if (difference.properties.empty()) {
        mark.sign = QStringLiteral("→");
        mark.color = movedColor;
    } else {
        mark.sign = QStringLiteral("≠");
        mark.color = changedColor;
    }
    return mark;
}

} // namespace

PicturePair::PicturePair(QWidget *parent)
    : QWidget(parent), m_closeUp(new QCheckBox(tr("Крупно"), this))
{
    m_closeUp->setChecked(true);
    m_closeUp->setToolTip(tr("Показать место отличия в натуральную величину, а не окно целиком"));
    connect(m_closeUp, &QCheckBox::toggled, this, &PicturePair::fit);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    for (Side &side : m_sides) {
        side.title = new QLabel(this);
        side.title->setTextFormat(Qt::PlainText);
        side.title->setWordWrap(true);
        side.picture = new QLabel(this);
        side.picture->setAlignment(Qt::AlignCenter);
        side.picture->setFrameShape(QFrame::StyledPanel);
        side.picture->setWordWrap(true);
        side.picture->setMinimumSize(160, 120);
        side.picture->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
        auto *column = new QVBoxLayout;
        auto *head = new QHBoxLayout;
        head->addWidget(side.title, 1);
        head->addStrut(m_closeUp->sizeHint().height());
        if (&side == &m_sides[1])
            head->addWidget(m_closeUp);
        column->addLayout(head);
        column->addWidget(side.picture, 1);
        layout->addLayout(column, 1);
    }
    showDifference(nullptr);
}

void PicturePair::setProjects(const ComparedProject &before, const ComparedProject &after,
                              const std::vector<Nodes::NodeDifference> &differences)
{
    m_sides[0].compared = before;
    m_sides[1].compared = after;
    m_differences = differences;
    for (const Side &side : m_sides)
        side.title->setText(side.compared.title);
    showDifference(nullptr);
}

void PicturePair::showDifference(const Nodes::NodeDifference *chosen)
{
    std::array<const Nodes::ConfigNode *, 2> windows{};
    for (int side = 0; side < 2 && chosen; ++side) {
        const Nodes::NodesCollection *project = m_sides[std::size_t(side)].compared.project;
        windows[std::size_t(side)] =
            WindowPicture::windowOf(project->FindNode(idOn(side, *chosen)));
    }
    // What was added or removed stands in one of them only: the other side shows the same window.
    for (const int side : {0, 1}) {
        const std::size_t here = std::size_t(side);
        if (!windows[here] && windows[1 - here])
            windows[here] =
                WindowPicture::counterpart(*windows[1 - here], *m_sides[here].compared.project);
    }
    showSide(0, windows[0], chosen);
    showSide(1, windows[1], chosen);
    fit();
}

void PicturePair::showSide(int side, const Nodes::ConfigNode *window,
                           const Nodes::NodeDifference *chosen)
{
    Side &shown = m_sides[std::size_t(side)];
    shown.window = window ? WindowPicture::render(*window) : QImage();
    shown.marks = window ? marksOf(side, *window, chosen) : std::vector<PictureMark>();
    shown.shown = {};
    if (shown.window.isNull())
        shown.picture->setText(chosen ? tr("Это не показано ни в одном окне.")
                                      : tr("Выберите отличие, чтобы увидеть его в окне."));
}

std::vector<PictureMark> PicturePair::marksOf(int side, const Nodes::ConfigNode &window,
                                              const Nodes::NodeDifference *chosen) const
{
    const Nodes::NodesCollection &project = *m_sides[std::size_t(side)].compared.project;
    std::vector<PictureMark> marks;
    for (const Nodes::NodeDifference &difference : m_differences) {
        const auto *element =
            dynamic_cast<const Nodes::BasicWidget *>(project.FindNode(idOn(side, difference)));
        if (!element || WindowPicture::windowOf(element) != &window)
            continue;
        PictureMark mark = markOf(difference);
        mark.place = element->GetGeometry();
        mark.isChosen = chosen && idOn(side, *chosen) == element->GetId();
        marks.push_back(std::move(mark));
    }
    return marks;
}

void PicturePair::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fit();
}

// Of both sides, as both show the same part of the window.
QRect PicturePair::chosenPlace() const
{
    QRect place;
    for (const Side &side : m_sides) {
        for (const PictureMark &mark : side.marks) {
            if (mark.isChosen)
                place |= QRect(mark.place.x, mark.place.y, mark.place.width, mark.place.height);
        }
    }
    return place;
}

QRect PicturePair::partOf(const Side &side) const
{
    const QRect chosen = chosenPlace();
    if (!m_closeUp->isChecked() || chosen.isEmpty())
        return side.window.rect();
    const QRect needed = chosen.marginsAdded(QMargins() + signRoom);
    const QSize room = side.picture->contentsRect().size();
    const QSize size = room.expandedTo(
        room.scaled(needed.size().expandedTo({1, 1}), Qt::KeepAspectRatioByExpanding));
    QRect part(QPoint(), size);
    part.moveCenter(needed.center());
    // As much of the window as there is room for, even at its edges.
    part.moveRight(std::min(part.right(), side.window.width() - 1));
    part.moveBottom(std::min(part.bottom(), side.window.height() - 1));
    part.moveTopLeft({std::max(part.left(), 0), std::max(part.top(), 0)});
    part &= side.window.rect();
    return part.isEmpty() ? side.window.rect() : part;
}

void PicturePair::fit()
{
    for (Side &side : m_sides) {
        if (side.window.isNull())
            continue;
        const QRect part = partOf(side);
        const QSize room = side.picture->contentsRect().size();
        const bool fits = part.width() <= room.width() && part.height() <= room.height();
        side.shown = side.window.copy(part);
        if (!fits)
            side.shown = side.shown.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        WindowPicture::mark(side.shown, part.topLeft(), double(side.shown.width()) / part.width(),
                            side.marks);
        side.picture->setPixmap(QPixmap::fromImage(side.shown));
    }
}

} // namespace Editor
