#pragma once

#include <QApplication>
#include <QMessageBox>

/// What the message boxes say that are up now: "title: text", modal ones with a "!" in front.
inline QStringList visibleBoxes()
{
    QStringList told;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget *widget : widgets) {
        const auto *box = qobject_cast<const QMessageBox *>(widget);
        if (box && box->isVisible())
            told << (box->isModal() ? "!" : "") + box->windowTitle() + ": " + box->text();
    }
    return told;
}
