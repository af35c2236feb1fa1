#include "widgets/dialogs/VirtualKeyboardForm.h"

#include "widgets/dialogs/CurrentValueLabel.h"
#include "widgets/dialogs/KeyButton.h"

#include <QBoxLayout>
#include <QDialog>
#include <QIcon>
#include <QLineEdit>

#include <iterator>

namespace Widgets {

namespace {

constexpr int spacing = 6;
constexpr int editHeight = 56;
constexpr QSize smallestKey(36, 40);

/// A key: with `characters` (normal and shifted one for each language) it types, else it is a
/// control key with a caption or an icon. Widths count quarters of a letter's key. A row without
/// keys holds the field; a key without a name is a gap.
struct Key
{
    const char *name;
    const char *characters;
    const char *caption;
    int width = 4;
};

// Second language: the Russian standard layout of the same physical keys.
constexpr Key editingRow[] = {{"btn_esc", nullptr, "Esc", 8},
                              {nullptr, nullptr, nullptr, 28},
                              {"btn_clear", nullptr, "Clear", 8},
                              {"btn_prev", nullptr, ":/icons/dialogs/left.svg", 8},
                              {"btn_next", nullptr, ":/icons/dialogs/right.svg", 8}};
constexpr Key digitsRow[] = {
    {"btn_backquote", "`~ёЁ", nullptr}, {"btn_1", "1!1!", nullptr},
    {"btn_2", "2@2\"", nullptr},        {"btn_3", "3#3№", nullptr},
    {"btn_4", "4$4;", nullptr},         {"btn_5", "5%5%", nullptr},
    {"btn_6", "6^6:", nullptr},         {"btn_7", "7&7?", nullptr},
    {"btn_8", "8*8*", nullptr},         {"btn_9", "9(9(", nullptr},
    {"btn_0", "0)0)", nullptr},         {"btn_dash", "-_-_", nullptr},
    {"btn_equal", "=+=+", nullptr},     {"btn_backspace", nullptr, "Backspace", 8}};
constexpr Key upperRow[] = {
    {"btn_tab", nullptr, "Tab", 6},      {"btn_q", "qQйЙ", nullptr},
    {"btn_w", "wWцЦ", nullptr},          {"btn_e", "eEуУ", nullptr},
    {"btn_r", "rRкК", nullptr},          {"btn_t", "tTеЕ", nullptr},
    {"btn_y", "yYнН", nullptr},          {"btn_u", "uUгГ", nullptr},
    {"btn_i", "iIшШ", nullptr},          {"btn_o", "oOщЩ", nullptr},
    {"btn_p", "pPзЗ", nullptr},          {"btn_startbracket", "[{хХ", nullptr},
    {"btn_endbracket", "]}ъЪ", nullptr}, {"btn_backslash", "\\|\\/", nullptr, 6}};
constexpr Key middleRow[] = {{"btn_caps", nullptr, "Caps", 7},
                             {"btn_a", "aAфФ", nullptr},
                             {"btn_s", "sSыЫ", nullptr},
                             {"btn_d", "dDвВ", nullptr},
                             {"btn_f", "fFаА", nullptr},
                             {"btn_g", "gGпП", nullptr},
                             {"btn_h", "hHрР", nullptr},
                             {"btn_j", "jJоО", nullptr},
                             {"btn_k", "kKлЛ", nullptr},
                             {"btn_l", "lLдД", nullptr},
                             {"btn_semicolon", ";:жЖ", nullptr},
                             {"btn_apostrophe", "'\"эЭ", nullptr},
                             {"btn_enter", nullptr, ":/icons/dialogs/enter.svg", 9}};
constexpr Key lowerRow[] = {
    {"btn_lshift", nullptr, "Shift", 9}, {"btn_z", "zZяЯ", nullptr},
    {"btn_x", "xXчЧ", nullptr},          {"btn_c", "cCсС", nullptr},
    {"btn_v", "vVмМ", nullptr},          {"btn_b", "bBиИ", nullptr},
    {"btn_n", "nNтТ", nullptr},          {"btn_m", "mMьЬ", nullptr},
    {"btn_comma", ",<бБ", nullptr},      {"btn_period", ".>юЮ", nullptr},
    {"btn_slash", "/?.,", nullptr},      {"btn_rshift", nullptr, "Shift", 11}};
constexpr Key bottomRow[] = {{"btn_lang", nullptr, ":/icons/dialogs/language.svg", 9},
                             {"btn_space", nullptr, "Space", 40},
                             {nullptr, nullptr, nullptr, 11}};

struct Row
{
    constexpr Row() = default;
    template <std::size_t Count>
    constexpr Row(const Key (&keys)[Count]) : first(keys), last(keys + Count)
    {
    }
    const Key *begin() const { return first; }
    const Key *end() const { return last; }

    const Key *first = nullptr;
    const Key *last = nullptr;
};

constexpr Row rows[] = {{}, editingRow, digitsRow, upperRow, middleRow, lowerRow, bottomRow};

bool isIcon(const Key &key)
{
    return key.caption && key.caption[0] == ':';
}

QPushButton *makeKey(const Key &key, QDialog *dialog)
{
    auto *button = new KeyButton(dialog);
    button->setObjectName(QLatin1String(key.name));
    button->setMinimumSize(smallestKey);
    button->setProperty("isControlKey", !key.characters);
    if (isIcon(key))
        button->setIcon(QIcon(QLatin1String(key.caption)));
    return button;
}

QStringList characters(const Key &key)
{
    return QString::fromUtf8(key.characters).split(QString(), Qt::SkipEmptyParts);
}

} // namespace

void VirtualKeyboardForm::addRow(QDialog *dialog, int row)
{
    auto *layout = new QHBoxLayout;
    layout->setSpacing(spacing);
    layout->setObjectName(row == 0 ? QStringLiteral("horizontalLayout")
                                   : QStringLiteral("horizontalLayout_%1").arg(row + 1));
    verticalLayout->addLayout(layout, row == 0 ? 0 : 1);
    if (row == 0)
        layout->addWidget(edValue);
    for (const Key &key : rows[row]) {
        if (!key.name) {
            layout->addStretch(key.width);
            continue;
        }
        QPushButton *button = makeKey(key, dialog);
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
        layout->addWidget(button, key.width);
        keys.append(button);
    }
}

void VirtualKeyboardForm::setupUi(QDialog *dialog)
{
    edValue = new QLineEdit(dialog);
    edValue->setObjectName(QStringLiteral("edValue"));
    edValue->setMinimumHeight(editHeight);
    verticalLayout = new QVBoxLayout(dialog);
    verticalLayout->setObjectName(QStringLiteral("verticalLayout"));
    verticalLayout->setSpacing(spacing);
    current = new CurrentValueLabel(dialog);
    verticalLayout->addWidget(current);
    for (int row = 0; row < int(std::size(rows)); ++row)
        addRow(dialog, row);
    takeControlKeys();
    for (QPushButton *button : {btn_caps, btn_lshift, btn_rshift})
        button->setCheckable(true);
    for (QPushButton *button : {btn_backspace, btn_prev, btn_next})
        button->setAutoRepeat(true);
    dialog->setProperty("LangMode", 0u);
    dialog->setProperty("ShiftMode", false);
    dialog->setProperty("CapsMode", false);
    retranslateUi(dialog);
    markLetters(0);
}

void VirtualKeyboardForm::takeControlKeys()
{
    const auto find = [this](const char *name) {
        for (QPushButton *key : qAsConst(keys))
            if (key->objectName() == QLatin1String(name))
                return key;
        Q_UNREACHABLE();
    };
    btn_backspace = find("btn_backspace");
    btn_caps = find("btn_caps");
    btn_clear = find("btn_clear");
    btn_enter = find("btn_enter");
    btn_esc = find("btn_esc");
    btn_lang = find("btn_lang");
    btn_lshift = find("btn_lshift");
    btn_next = find("btn_next");
    btn_prev = find("btn_prev");
    btn_rshift = find("btn_rshift");
    btn_space = find("btn_space");
    btn_tab = find("btn_tab");
}

void VirtualKeyboardForm::retranslateUi(QDialog *dialog)
{
    dialog->setProperty("Languages", QStringList{QStringLiteral("En"), QStringLiteral("Ru")});
    auto button = keys.cbegin();
    for (const Row &row : rows) {
        for (const Key &key : row) {
            if (!key.name)
                continue;
            if (key.characters)
                (*button)->setProperty("btnData", characters(key));
            else if (!isIcon(key))
                (*button)->setText(QLatin1String(key.caption));
            ++button;
        }
    }
}

void VirtualKeyboardForm::markLetters(int language)
{
    for (QPushButton *key : qAsConst(keys)) {
        const QString normal = key->property("btnData").toStringList().value(2 * language);
        const bool isLetter = !normal.isEmpty() && normal.at(0).isLetter();
        key->setProperty("btnMode", isLetter ? QVariant(true) : QVariant());
    }
}

void VirtualKeyboardForm::fitKeys(int width, int height)
{
    const int pixels = qBound(14, qMin(width * 3 / 10, height * 2 / 5), 28);
    for (QPushButton *key : qAsConst(keys)) {
        QFont font = key->font();
        font.setPixelSize(pixels);
        key->setFont(font);
        key->setIconSize(QSize(pixels, pixels) * 3 / 2);
    }
    QFont font = edValue->font();
    font.setPixelSize(24);
    edValue->setFont(font);
}

} // namespace Widgets
