#include "widgets/reports/engine/data/SnapshotTaker.h"

#include "widgets/reports/engine/data/DataSourceManager.h"
#include "widgets/reports/engine/data/SnapshotRows.h"

#include <QAbstractItemModel>
#include <QTimer>

namespace LimeReport {

namespace {

constexpr int rowsPerLook = 16; // at the clock
constexpr int attempts = 5;

} // namespace

struct SnapshotTaker::Reading
{
    DataSet data;
    QMap<QString, QPointer<QAbstractItemModel>> waiting;
    QString name; // of the model under way
    QPointer<QAbstractItemModel> model;
    std::shared_ptr<SnapshotRows> rows;
    std::vector<QMetaObject::Connection> watches;
    int changes = 0; // of the model under way

    ~Reading() { unwatch(); }
    void unwatch()
    {
        for (const QMetaObject::Connection &watch : watches)
            QObject::disconnect(watch);
        watches.clear();
    }
};

SnapshotTaker::SnapshotTaker(QObject *parent) : QObject(parent), m_timer(new QTimer(this))
{
    connect(m_timer, &QTimer::timeout, this, &SnapshotTaker::onSlice);
}

SnapshotTaker::~SnapshotTaker() = default;

void SnapshotTaker::start(const DataSourceManager &manager)
{
    m_reading = std::make_unique<Reading>();
    m_reading->data.variables = manager.variables();
    m_reading->data.links = manager.links();
    const QMap<QString, QAbstractItemModel *> models = manager.models();
    for (auto model = models.begin(); model != models.end(); ++model)
        m_reading->waiting.insert(model.key(), model.value());
    m_isRunning = true;
    m_timer->start(0);
}

void SnapshotTaker::cancel()
{
    m_timer->stop();
    m_reading.reset();
    m_isRunning = false;
}

void SnapshotTaker::nextModel()
{
    Reading &reading = *m_reading;
    reading.name = reading.waiting.firstKey();
    reading.model = reading.waiting.take(reading.name);
    reading.changes = 0;
    if (!reading.model)
        return; // deleted since: a source that is not there, as if asked for later
    if (const auto *shared = dynamic_cast<SharedRowsModel *>(reading.model.data())) {
        reading.data.sources.insert(reading.name, DataSource(shared->sharedRows()));
        reading.model.clear();
        return;
    }
    reading.rows = std::make_shared<SnapshotRows>(*reading.model);
    const QAbstractItemModel *model = reading.model;
    const auto changed = [this] { onModelChanged(); };
    reading.watches = {connect(model, &QAbstractItemModel::dataChanged, this, changed),
                       connect(model, &QAbstractItemModel::rowsInserted, this, changed),
                       connect(model, &QAbstractItemModel::rowsRemoved, this, changed),
                       connect(model, &QAbstractItemModel::rowsMoved, this, changed),
                       connect(model, &QAbstractItemModel::columnsInserted, this, changed),
                       connect(model, &QAbstractItemModel::columnsRemoved, this, changed),
                       connect(model, &QAbstractItemModel::columnsMoved, this, changed),
                       connect(model, &QAbstractItemModel::headerDataChanged, this, changed),
                       connect(model, &QAbstractItemModel::layoutChanged, this, changed),
                       connect(model, &QAbstractItemModel::modelReset, this, changed)};
}

void SnapshotTaker::onModelChanged()
{
    ++m_reading->changes;
    m_reading->rows.reset(); // begun anew by the next slice
}

void SnapshotTaker::finishModel()
{
    m_reading->unwatch();
    if (m_reading->model && m_reading->rows)
        m_reading->data.sources.insert(m_reading->name, DataSource(m_reading->rows));
    m_reading->model.clear();
    m_reading->rows.reset();
}

void SnapshotTaker::onSlice()
{
    QElapsedTimer clock;
    clock.start();
    Reading &reading = *m_reading;
    do {
        if (!reading.model) {
            finishModel();
            if (reading.waiting.isEmpty()) {
                const std::unique_ptr<Reading> done = std::move(m_reading);
                cancel();
                emit taken(done->data);
                return;
            }
            nextModel();
            continue;
        }
        if (!reading.rows)
            reading.rows = std::make_shared<SnapshotRows>(*reading.model);
        const int rows = reading.model->rowCount();
        const int end = reading.changes < attempts
                            ? std::min(rows, reading.rows->rowCount() + rowsPerLook)
                            : rows;
        while (reading.rows->rowCount() < end)
            reading.rows->addRow(*reading.model);
        if (end == rows)
            finishModel();
    } while (clock.nsecsElapsed() < m_sliceMilliseconds * 1000000LL);
}

} // namespace LimeReport
