#pragma once

#include "widgets/WidgetsExport.h"

#include <QPushButton>
#include <QVariant>
#include <QVector>

namespace Widgets {

/// Button with a menu of things to tick, any number of them; none: no restriction. It tells how
/// many are ticked and looks latched while any is. GUI thread.
class WIDGETS_EXPORT ChoiceButton : public QPushButton
{
    Q_OBJECT

public:
    struct Item
    {
        QVariant value;
        QString text;
    };

    ChoiceButton(QString title, QWidget *parent);

    /// What is ticked and no longer among these stays.
    void setItems(const QVector<Item> &items);
    QVariantList chosen() const { return m_chosen; }
    /// Tells nobody.
    void setChosen(const QVariantList &chosen);

signals:
    /// The menu is going to open: the time to set items.
    void opening();
    void changed();

private:
    void openMenu();
    void toggle(const QVariant &value, bool isOn);
    void showState();

    QString m_title;
    QVector<Item> m_items;
    QVariantList m_chosen;
};

} // namespace Widgets
