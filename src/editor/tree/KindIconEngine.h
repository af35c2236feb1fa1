#pragma once

#include <QIcon>
#include <QIconEngine>

#include <utility>

namespace Editor {

/// Paints an icon of many colours the same way in every state: in a selected row on a light ground
/// of its own, where it would else be lost in the colour of the selection. GUI thread.
class KindIconEngine : public QIconEngine
{
public:
    explicit KindIconEngine(QIcon icon) : m_icon(std::move(icon)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine *clone() const override { return new KindIconEngine(*this); }

private:
    QIcon m_icon;
};

} // namespace Editor
