#pragma once

#include "editor/properties/PropertyHost.h"

#include <QDialog>

class QLabel;
class QListWidget;
class QPushButton;

namespace Nodes {
struct KindInfo;
struct PropertyDescriptor;
} // namespace Nodes

namespace Editor {

class PropertyModel;
class PropertyView;

/// An ordered list of nodes, such as the actions of a gesture: added, made, put in order, taken off
/// it; beside it the properties of the current one. Each change is a step of its own, made at once
/// to all nodes of the model.
class LinksWindow : public QDialog
{
    Q_OBJECT

public:
    /// Of the row with that key in the model.
    LinksWindow(PropertyModel &model, const QString &key, const PropertyHost &host,
                QWidget *parent);
    ~LinksWindow() override;

    /// Makes a node of the kind where such nodes are kept nearest to the element, and adds it: one
    /// step.
    void create(const Nodes::KindInfo &kind);
    void add(const Nodes::NodeLinks &nodes);
    void removeCurrent();
    /// -1: up, 1: down.
    void moveCurrent(int by);

private:
    QWidget *makeButtons(const Nodes::PropertyDescriptor &descriptor);
    QPushButton *addButton(QWidget *parent, const QString &text);
    void fill();
    void showCurrent();
    void pick();
    bool set(const QStringList &ids, int current);
    QStringList ids() const;

    PropertyModel &m_model;
    QString m_key;
    PropertyHost m_host;
    const Nodes::PropertyDescriptor *m_descriptor = nullptr;
    QListWidget *m_list;
    PropertyView *m_details;
    QLabel *m_error;
};

} // namespace Editor
