#include "editor/properties/values/ResourceEditor.h"

#include "editor/properties/values/FilePicker.h"
#include "utils/files/ResourceFiles.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/PropertyDescriptor.h"
#include "widgets/dialogs/PlainMessageBox.h"

#include <QDir>
#include <QLineEdit>
#include <QToolButton>

namespace Editor {

namespace {

QString directoryOf(const ValueContext &context)
{
    return context.project ? QString::fromStdString(context.project->GetDirectory()) : QString();
}

} // namespace

ResourceEditor::ResourceEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_line(new QLineEdit(this))
{
    m_line->setFrame(false);
    setMain(m_line);
    connect(m_line, &QLineEdit::textEdited, this, [this] { touch(); });
    QToolButton *other = addButton(QStringLiteral("…"), QStringLiteral("Выбрать файл (Alt+Вниз)"));
    other->setShortcut(QKeySequence(Qt::ALT + Qt::Key_Down));
    connect(other, &QToolButton::clicked, this, &ResourceEditor::pick);
    QToolButton *none = addButton(QStringLiteral("×"), QStringLiteral("Очистить"));
    connect(none, &QToolButton::clicked, this, [this] {
        setText(QString());
        finish();
    });
}

ResourceEditor::~ResourceEditor() = default;

void ResourceEditor::setText(const QString &text)
{
    m_line->setText(text);
}

QString ResourceEditor::text() const
{
    return m_line->text();
}

void ResourceEditor::pick()
{
    auto *picker = new FilePicker(directoryOf(context()), descriptor().editorHint == "wav", this);
    picker->setWindowTitle(QString::fromStdString(descriptor().nameRu));
    picker->showFile(text());
    connect(picker, &FilePicker::fileSelected, this, &ResourceEditor::take);
    picker->open();
}

void ResourceEditor::take(const QString &path)
{
    const Utils::ResourceFiles::Outcome found =
        Utils::ResourceFiles(directoryOf(context())).find(path);
    if (!found.error.isEmpty())
        return showError(found.error);
    if (!found.isForeign) {
        setText(found.name);
        return finish();
    }
    auto *question = new Widgets::PlainMessageBox(this);
    question->setQuestion(
        QStringLiteral("Файл вне проекта"),
        QStringLiteral("Файл «%1» лежит вне папки проекта. Скопировать его в папку «%2» проекта?")
            .arg(QDir::toNativeSeparators(path), Utils::ResourceFiles::folderFor(path)),
        QStringLiteral("Скопировать"));
    question->askFor([this, path] { bringIn(path); });
}

void ResourceEditor::bringIn(const QString &path)
{
    const auto brought = Utils::ResourceFiles(directoryOf(context()))
                             .bringIn(path, Utils::ResourceFiles::folderFor(path));
    if (!brought.error.isEmpty())
        return showError(brought.error);
    setText(brought.name);
    finish();
}

} // namespace Editor
