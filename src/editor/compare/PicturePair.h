#pragma once

#include "editor/compare/ComparedProject.h"
#include "editor/compare/WindowPicture.h"

#include "nodes/project/NodeDifference.h"

#include <QWidget>

#include <array>

class QCheckBox;
class QLabel;

namespace Editor {

/// A window of two projects side by side, with signs on what differs. GUI thread.
class PicturePair : public QWidget
{
    Q_OBJECT

public:
    explicit PicturePair(QWidget *parent = nullptr);

    /// The projects outlive what is shown of them.
    void setProjects(const ComparedProject &before, const ComparedProject &after,
                     const std::vector<Nodes::NodeDifference> &differences);
    /// Shows the window of that difference; null or one that no window shows: a hint.
    void showDifference(const Nodes::NodeDifference *chosen);
    /// As it is shown on the left and the right side; null without one.
    const QImage &picture(int side) const { return m_sides[std::size_t(side)].shown; }
    /// What differs in its own size, as far as there is room; else the whole window.
    QCheckBox &closeUp() const { return *m_closeUp; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Side
    {
        ComparedProject compared;
        QLabel *title = nullptr;
        QLabel *picture = nullptr;
        QImage window; ///< whole, without signs
        std::vector<PictureMark> marks;
        QImage shown;
    };

    std::vector<PictureMark> marksOf(int side, const Nodes::ConfigNode &window,
                                     const Nodes::NodeDifference *chosen) const;
    void showSide(int side, const Nodes::ConfigNode *window, const Nodes::NodeDifference *chosen);
    QRect chosenPlace() const;
    QRect partOf(const Side &side) const;
    void fit();

    std::array<Side, 2> m_sides;
    QCheckBox *m_closeUp;
    std::vector<Nodes::NodeDifference> m_differences;
};

} // namespace Editor
