#pragma once

#include "widgets/dialogs/PlainMessageBox.h"

#include <QVector>

namespace Widgets {

/// Message box of what was refused: the latest few texts, each once, with how often it came.
class WIDGETS_EXPORT RefusalBox : public PlainMessageBox
{
    Q_OBJECT

public:
    static constexpr const char *Key = "refusal";

    explicit RefusalBox(QWidget *parent = nullptr);

    /// Texts shown at a time; older ones make room.
    static constexpr int MaximumTexts = 5;

    void add(const QString &text);

private:
    struct Line
    {
        QString text;
        int count;
    };

    QString shownText() const;

    QVector<Line> m_lines;
};

} // namespace Widgets
