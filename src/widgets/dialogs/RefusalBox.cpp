#include "widgets/dialogs/RefusalBox.h"

#include <algorithm>

namespace Widgets {

namespace {

QString timesOf(int count)
{
    const int tens = count % 100;
    const int ones = count % 10;
    const bool isFew = ones >= 2 && ones <= 4 && (tens < 12 || tens > 14);
    return QString::number(count) + (isFew ? QStringLiteral(" раза") : QStringLiteral(" раз"));
}

} // namespace

RefusalBox::RefusalBox(QWidget *parent) : PlainMessageBox(parent)
{
    setStandardButtons(Ok);
}

void RefusalBox::add(const QString &text)
{
    const auto known = std::find_if(m_lines.begin(), m_lines.end(),
                                    [&text](const Line &line) { return line.text == text; });
    if (known != m_lines.end()) {
        ++known->count;
    } else {
        if (m_lines.size() == MaximumTexts)
            m_lines.removeFirst();
        m_lines.append({text, 1});
    }
    setText(shownText());
}

QString RefusalBox::shownText() const
{
    QStringList texts;
    for (const Line &line : m_lines)
        texts << (line.count == 1
                      ? line.text
                      : QStringLiteral("%1 (повторилось %2)").arg(line.text, timesOf(line.count)));
    return texts.join(QStringLiteral("\n\n"));
}

} // namespace Widgets
