#include "support/Rows.h"

#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/elements/painting/LabelText.h"

#include <QPainter>

using Widgets::ElementPainting;
using Widgets::LabelText;

namespace {

template <class Draw> QImage painted(Draw draw)
{
    QImage image(200, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(20, 10);
    painter.setPen(Qt::black);
    draw(painter);
    return image;
}

} // namespace

class LabelTextTest : public QObject
{
    Q_OBJECT

private slots:
    void looksLikeDrawText_data();
    void looksLikeDrawText();
    void textRect();
};

void LabelTextTest::looksLikeDrawText_data()
{
    const Rows<QString, int, double, int> row("text", "flags", "angle", "border");
    const int middle = Qt::AlignRight | Qt::AlignVCenter;
    const int top = Qt::AlignLeft | Qt::AlignTop;
    row("number", "-1234.5", middle, 0, 0);
    row("number with unit", "71.4 °C", middle, 0, 2);
    row("caption", "Давление пара", top, 0, 0);
    row("centred, bottom", "Да", Qt::AlignHCenter | Qt::AlignBottom, 0, 1);
    row("two lines", "Котёл\\n№ 1", Qt::AlignCenter, 0, 0);
    row("too wide", "Температура прямой сетевой воды", middle, 0, 0);
    row("turned by 90", "12.5 МПа", Qt::AlignCenter, 90, 0);
    row("turned by 30", "12.5", Qt::AlignCenter, 30, 0);
    row("wrapped", "один два три четыре", top | Qt::TextWordWrap, 0, 0);
    row("right to left", "12 שלום", middle, 0, 0);
}

void LabelTextTest::looksLikeDrawText()
{
    QFETCH(QString, text);
    QFETCH(int, flags);
    QFETCH(double, angle);
    QFETCH(int, border);
    const LabelText::Place place{QSize(110, 40), QPoint(55, 20), angle, border, flags};
    const QFont font(QStringLiteral("DejaVu Sans"), 11);
    const QImage expected = painted([&](QPainter &painter) {
        painter.setFont(font);
        ElementPainting::drawRotatedText(painter, place.box, place.centre, angle, border, flags,
                                         text);
    });
    const auto drawnAfter = [&](const QFont &oldFont, const LabelText::Place &oldPlace,
                                const QString &oldText) {
        LabelText label;
        label.setFont(oldFont);
        painted([&](QPainter &painter) { label.draw(painter, oldPlace, oldText); });
        label.setFont(font);
        return painted([&](QPainter &painter) { label.draw(painter, place, text); });
    };
    LabelText::Place turned = place;
    turned.angle += 90;
    QCOMPARE(drawnAfter(font, place, text), expected); // from the layout kept
    QCOMPARE(drawnAfter(QFont(QStringLiteral("DejaVu Sans"), 14), place, text), expected);
    QCOMPARE(drawnAfter(font, place, "1"), expected);
    QCOMPARE(drawnAfter(font, turned, text), expected);
    QVERIFY(expected != painted([](QPainter &) {}));
}

void LabelTextTest::textRect()
{
    const QSize size(100, 30);
    QCOMPARE(ElementPainting::rotatedTextRect(size, 0, 0), QRect(-50, -15, 100, 30));
    QCOMPARE(ElementPainting::rotatedTextRect(size, 90, 0), QRect(-15, -50, 30, 100));
    QCOMPARE(ElementPainting::rotatedTextRect(size, 0, 3), QRect(-44, -9, 88, 18));
}

QTEST_MAIN(LabelTextTest)
#include "tst_label_text.moc"
