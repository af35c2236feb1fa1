#pragma once

#include <QDialog>
#include <QUrl>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QTextBrowser;

namespace Editor {

/// Reads the documentation of the program from its directory: a list that is searched by what
/// stands in the documents, the document, links between them, the way back. Asks nothing of the
/// network. GUI thread.
class DocumentsWindow : public QDialog
{
    Q_OBJECT

public:
    explicit DocumentsWindow(const QString &directory, QWidget *parent = nullptr);

    /// A document of the directory, such as "editing.md", or "editing.md#keys" for the heading with
    /// these words; false when there is none.
    bool open(const QString &document);
    /// Leaves the documents in the list that have all words, and marks these in the one shown.
    void search(const QString &words);

private:
    struct Document
    {
        QString file;
        QString folded; ///< text, to be searched
        QListWidgetItem *row;
    };

    void read(const QString &directory);
    void goTo(const QUrl &link);
    void goToHeading(const QString &slug);
    void markFound();
    void showPlace(const QUrl &source);

    QString m_directory;
    QVector<Document> m_documents;
    QLineEdit *m_search;
    QListWidget *m_list;
    QTextBrowser *m_text;
    QPushButton *m_back;
    QPushButton *m_forward;
    QLabel *m_told;
};

} // namespace Editor
