#include "widgets/elements/ElementPainting.h"
#include "widgets/elements/LabelText.h"

#include <QImage>
#include <QPainter>
#include <QtTest>

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
    void followsChanges();
    void textRect_data();
    void textRect();
};

void LabelTextTest::looksLikeDrawText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("flags");
    QTest::addColumn<double>("angle");
    QTest::addColumn<int>("border");
    const int middle = Qt::AlignRight | Qt::AlignVCenter;
    QTest::newRow("number") << "-1234.5" << middle << 0. << 0;
    QTest::newRow("number with unit") << "71.4 °C" << middle << 0. << 2;
    QTest::newRow("caption") << "Давление пара" << int(Qt::AlignLeft | Qt::AlignTop) << 0. << 0;
    QTest::newRow("centred, bottom") << "Да" << int(Qt::AlignHCenter | Qt::AlignBottom) << 0. << 1;
    QTest::newRow("two lines") << "Котёл\\n№ 1" << int(Qt::AlignCenter) << 0. << 0;
    QTest::newRow("too wide") << "Температура прямой сетевой воды" << middle << 0. << 0;
    QTest::newRow("turned by 90") << "12.5 МПа" << int(Qt::AlignCenter) << 90. << 0;
    QTest::newRow("turned by 30") << "12.5" << int(Qt::AlignCenter) << 30. << 0;
    QTest::newRow("wrapped") << "один два три четыре"
                             << int(Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap) << 0. << 0;
    QTest::newRow("right to left") << QString::fromUtf8("12 שלום") << middle << 0. << 0;
}

void LabelTextTest::looksLikeDrawText()
{
    QFETCH(QString, text);
    QFETCH(int, flags);
    QFETCH(double, angle);
    QFETCH(int, border);
    const QSize box(110, 40);
    const QPoint centre(55, 20);
    const QFont font(QStringLiteral("DejaVu Sans"), 11);
    const QImage expected = painted([&](QPainter &painter) {
        painter.setFont(font);
        ElementPainting::drawRotatedText(painter, box, centre, angle, border, flags, text);
    });
    LabelText label;
    label.setFont(font);
    const auto draw = [&](QPainter &painter) {
        label.draw(painter, {box, centre, angle, border, flags}, text);
    };
    QCOMPARE(painted(draw), expected);
    QCOMPARE(painted(draw), expected); // from the layout kept
    QVERIFY(expected != painted([](QPainter &) {}));
}

void LabelTextTest::followsChanges()
{
    LabelText label;
    const auto look = [&label](int pointSize, int flags, const QString &text) {
        label.setFont(QFont(QStringLiteral("DejaVu Sans"), pointSize));
        return painted([&](QPainter &painter) {
            label.draw(painter, {QSize(110, 40), QPoint(55, 20), 0, 0, flags}, text);
        });
    };
    const QImage first = look(11, Qt::AlignLeft, QStringLiteral("1"));
    QVERIFY(look(11, Qt::AlignLeft, QStringLiteral("2")) != first);
    QVERIFY(look(11, Qt::AlignRight, QStringLiteral("1")) != first);
    QVERIFY(look(14, Qt::AlignLeft, QStringLiteral("1")) != first);
    QCOMPARE(look(11, Qt::AlignLeft, QStringLiteral("1")), first);
}

void LabelTextTest::textRect_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<int>("border");
    QTest::addColumn<QRect>("rect");
    QTest::newRow("upright") << 0. << 0 << QRect(-50, -15, 100, 30);
    QTest::newRow("quarter turn swaps the sides") << 90. << 0 << QRect(-15, -50, 30, 100);
    QTest::newRow("shifted by two borders") << 0. << 3 << QRect(-44, -9, 88, 18);
}

void LabelTextTest::textRect()
{
    QFETCH(double, angle);
    QFETCH(int, border);
    QTEST(ElementPainting::rotatedTextRect(QSize(100, 30), angle, border), "rect");
}

QTEST_MAIN(LabelTextTest)
#include "tst_label_text.moc"
