#include "widgets/dialogs/AuthenticationDialog.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/DialogPlacement.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/VirtualKeyboard.h"
#include "widgets/dialogs/VirtualNumpad.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/frames/FrameWindow.h"

#include "nodes/auth/securityUser.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/system/systemCore.h"
#include "utils/convert/MetaTypes.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QEventLoop>
#include <QGridLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTimer>

namespace {

constexpr QSize dialogSize(369, 166);
using Widgets::TouchSize;
constexpr int clearedTime = 100; // ms that the old outcome stays away, so that a new one is noticed
constexpr int successTime = 500; // ms
constexpr int codeNoSuchUser = 1317;
constexpr int codeWrongPassword = 1318;
constexpr Nodes::NodeType userType(Nodes::securityUser::Code);

template <class Widget> Widget *named(Widget *widget, const char *name)
{
    widget->setObjectName(QLatin1String(name));
    return widget;
}

} // namespace

AuthenticationDialog::AuthenticationDialog(QWidget *parent) : BasicDialog(parent)
{
    setWindowTitle(tr("Авторизация"));
    QFont dialogFont = font();
    dialogFont.setPointSize(10);
    setFont(dialogFont);
    build();
    resize(dialogSize);
    connect(m_users, &QComboBox::currentTextChanged, this, &AuthenticationDialog::updateOk);
    connect(m_password, &QLineEdit::textChanged, this, &AuthenticationDialog::updateOk);
    connect(m_numpadButton, &QPushButton::clicked, this, &AuthenticationDialog::openNumpad);
    connect(m_keyboardButton, &QPushButton::clicked, this, &AuthenticationDialog::openKeyboard);
    connect(m_okButton, &QPushButton::clicked, this, &AuthenticationDialog::logIn);
    connect(m_cancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

void AuthenticationDialog::build()
{
    m_users = named(new QComboBox(this), "comboBox");
    m_users->setMinimumHeight(TouchSize);
    m_users->setItemDelegate(new QStyledItemDelegate(m_users)); // heeds the items' size hints
    m_password = named(new QLineEdit(this), "lineEdit");
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setMinimumHeight(TouchSize);
    m_numpadButton = named(new QPushButton(this), "btnKeyboard");
    m_numpadButton->setIcon(QIcon(QStringLiteral(":/icons/dialogs/keyboard.svg")));
    m_numpadButton->setIconSize({28, 28});
    m_numpadButton->setToolTip(tr("Цифры"));
    m_keyboardButton = named(new QPushButton(tr("Абв"), this), "btnTextKeyboard");
    m_keyboardButton->setToolTip(tr("Буквы и цифры"));
    for (QPushButton *button : {m_numpadButton, m_keyboardButton}) {
        button->setFixedSize(TouchSize, TouchSize);
        button->setAutoDefault(false);
    }
    m_outcome = named(new QLabel(this), "lblResult");
    m_outcome->setTextFormat(Qt::PlainText);
    m_outcome->setWordWrap(true);
    m_okButton = named(new QPushButton(tr("OK"), this), "btnOk");
    m_okButton->setEnabled(false);
    m_cancelButton = named(new QPushButton(tr("Отмена"), this), "btnCancel");
    m_cancelButton->setAutoDefault(false);
    for (QPushButton *button : {m_okButton, m_cancelButton})
        button->setMinimumSize(96, 36);

    auto *image = named(new QLabel(this), "lblImage");
    image->setScaledContents(true);
    image->setMaximumSize(64, 64);
    image->setPixmap(QIcon(QStringLiteral(":/icons/authentication.png")).pixmap(64, 64));
    auto *userCaption = named(new QLabel(tr("Логин:"), this), "label");
    auto *passwordCaption = named(new QLabel(tr("Пароль:"), this), "label_2");
    for (QLabel *caption : {userCaption, passwordCaption})
        caption->setMinimumHeight(TouchSize);
    arrange(image, userCaption, passwordCaption);
}

void AuthenticationDialog::arrange(QLabel *image, QLabel *userCaption, QLabel *passwordCaption)
{
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(2);
    grid->addWidget(image, 0, 0, 2, 1, Qt::AlignCenter);
    grid->addWidget(userCaption, 0, 1);
    grid->addWidget(m_users, 0, 2, 1, 3);
    grid->addWidget(passwordCaption, 1, 1);
    grid->addWidget(m_password, 1, 2);
    grid->addWidget(m_numpadButton, 1, 3);
    grid->addWidget(m_keyboardButton, 1, 4);
    grid->setColumnStretch(2, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_okButton);
    buttons->addWidget(m_cancelButton);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(6, 6, 6, 6);
    column->setSpacing(2);
    column->addWidget(makeCurrentUserRow());
    column->addLayout(grid);
    column->addWidget(m_outcome, 1);
    column->addLayout(buttons);
}

QWidget *AuthenticationDialog::makeCurrentUserRow()
{
    m_currentRow = new QWidget(this);
    m_current = named(new QLabel(m_currentRow), "lblCurrent");
    m_current->setTextFormat(Qt::PlainText);
    m_current->setWordWrap(true);
    auto *logout = named(new QPushButton(tr("Выйти"), m_currentRow), "btnLogout");
    logout->setAutoDefault(false);
    logout->setMinimumSize(96, TouchSize);
    connect(logout, &QPushButton::clicked, this, &AuthenticationDialog::logOut);
    auto *row = new QHBoxLayout(m_currentRow);
    row->setContentsMargins(0, 0, 0, 6);
    row->addWidget(m_current, 1);
    row->addWidget(logout);
    m_currentRow->hide();
    return m_currentRow;
}

void AuthenticationDialog::showCurrentUser()
{
    const auto *user =
        users() ? dynamic_cast<Nodes::securityUser *>(users()->GetCurrentUser().GetNode())
                : nullptr;
    m_currentRow->setVisible(user);
    if (user) {
        const std::string &name = user->GetFullName();
        m_current->setText(tr("Вход выполнен: %1\nСменить пользователя:")
                               .arg(QString::fromStdString(name.empty() ? user->GetName() : name)));
    }
    resize(dialogSize + QSize(0, user ? m_currentRow->sizeHint().height() : 0));
}

// Whoever opens it goes on to type.
void AuthenticationDialog::showEvent(QShowEvent *event)
{
    BasicDialog::showEvent(event);
    m_password->setFocus();
}

// An empty field is no attempt: the pauses are for wrong passwords.
void AuthenticationDialog::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isOnButton = qobject_cast<QPushButton *>(focusWidget());
    if (isEnter && !isOnButton && m_password->text().isEmpty() && needsPassword())
        m_password->setFocus();
    else
        BasicDialog::keyPressEvent(event);
}

bool AuthenticationDialog::needsPassword() const
{
    const auto *user = dynamic_cast<Nodes::securityUser *>(selectedUser().GetNode());
    return !user || !user->isPasswordless();
}

void AuthenticationDialog::logOut()
{
    if (users())
        users()->Logout();
    reject();
}

void AuthenticationDialog::setNode(Nodes::BasicNode *node)
{
    m_node = node;
    m_users->clear();
    Nodes::NodeLinks users;
    if (const auto *project = node ? node->GetNodesCollection() : nullptr)
        project->FindNodes(userType, &users);
    for (const Nodes::NodeLink &user : users) {
        if (!user.isValid())
            continue;
        m_users->addItem(QString::fromStdString(user->GetName()), QVariant::fromValue(user));
        m_users->setItemData(m_users->count() - 1, QSize(TouchSize, TouchSize), Qt::SizeHintRole);
    }
    showCurrentUser();
    updateOk();
}

Nodes::NodeLink AuthenticationDialog::selectedUser() const
{
    return m_users->currentData().value<Nodes::NodeLink>();
}

void AuthenticationDialog::updateOk()
{
    const bool hasUser = selectedUser().isValid();
    m_okButton->setEnabled(hasUser);
    m_okButton->setDefault(hasUser);
}

Nodes::systemAuthentication *AuthenticationDialog::users() const
{
    const Nodes::NodesCollection *project = m_node.GetNodesCollection();
    const Nodes::systemCore *core = project ? project->GetCore() : nullptr;
    return core ? core->GetSystemAuthentication() : nullptr;
}

Nodes::Result AuthenticationDialog::authenticate()
{
    return users() ? users()->Authenticate(selectedUser(), m_password->text().toStdString())
                   : Nodes::Result(Nodes::Result::NotAvailable);
}

QString AuthenticationDialog::messageFor(const Nodes::Result &result) const
{
    if (result.IsSuccess())
        return {};
    if (result.GetCode() == codeNoSuchUser)
        return tr("Пользователь не найден");
    if (result.GetCode() == codeWrongPassword)
        return tr("Неверный пароль");
    if (result == Nodes::Result::LimitExceeded) {
        const int pause = users() ? users()->GetPause(selectedUser()) : 0;
        return tr("Ошибка: много попыток, ждите %1 с").arg(pause);
    }
    return tr("Ошибка: %1").arg(QString::fromStdString(result.GetResultTranslated()));
}

// Ignores being pressed again while it shows the outcome: each press would count as an attempt.
void AuthenticationDialog::logIn()
{
    if (m_isBusy)
        return;
    m_isBusy = true;
    const QPointer<AuthenticationDialog> self = this;
    const Nodes::Result result = authenticate();
    const QString message = messageFor(result);
    m_outcome->clear();
    QEventLoop pause;
    QTimer::singleShot(clearedTime, &pause, &QEventLoop::quit);
    pause.exec();
    if (!self)
        return;
    QPalette colours = m_outcome->palette();
    colours.setColor(QPalette::WindowText,
                     result ? QColor(0x1b, 0x5e, 0x20) : QColor(0xb3, 0x12, 0x12));
    m_outcome->setPalette(colours);
    m_outcome->setText(message);
    if (result)
        QTimer::singleShot(successTime, this, &QDialog::accept);
    m_isBusy = result.IsSuccess();
}

template <class Keyboard> void AuthenticationDialog::enterOn(QString (*textOf)(Keyboard &))
{
    const QPointer<AuthenticationDialog> self = this;
    auto *frame = new Widgets::FrameWindow(this);
    Widgets::DialogRequest request;
    request.parent = frame;
    const QPointer<Keyboard> keyboard = Widgets::Dialogs::make<Keyboard>(request);
    keyboard->setEchoMode(QLineEdit::Password);
    // Digits and letters alike: a number would lose leading zeros and whatever is beyond a double.
    keyboard->setValidator(nullptr);
    frame->setDialog(keyboard);
    Widgets::DialogPlacement::centre(*frame, Widgets::ScreenNumber(this));
    const int result = frame->exec();
    if (self && keyboard && result != 0)
        m_password->setText(textOf(*keyboard));
}

void AuthenticationDialog::openNumpad()
{
    enterOn<Widgets::VirtualNumpad>([](Widgets::VirtualNumpad &pad) { return pad.text(); });
}

void AuthenticationDialog::openKeyboard()
{
    enterOn<Widgets::VirtualKeyboard>(
        [](Widgets::VirtualKeyboard &keyboard) { return keyboard.getData(); });
}
