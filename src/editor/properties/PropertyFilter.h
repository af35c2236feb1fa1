#pragma once

#include <QSortFilterProxyModel>

namespace Editor {

/// Rows of a property table whose name or key has a text, with their headings; a heading that has
/// it shows all of its rows.
class PropertyFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit PropertyFilter(QObject *parent = nullptr);
    ~PropertyFilter() override;

    void search(const QString &text);
    const QString &text() const { return m_text; }

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    QString m_text;
};

} // namespace Editor
