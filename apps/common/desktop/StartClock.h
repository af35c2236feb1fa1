#pragma once

#include <QObject>

#include <optional>

namespace Host {

/// Logs how long the start took, in the category "station.start": milliseconds from the start of
/// the process to each stage and to the first frame on screen.
class StartClock : public QObject
{
    Q_OBJECT

public:
    explicit StartClock(QObject *parent = nullptr);

    /// Milliseconds since the start of the process.
    qint64 elapsed() const;
    /// The same at the end of the first painting; nothing before.
    std::optional<qint64> firstFrame() const { return m_firstFrame; }

    void mark(const char *stage) const;
    /// Marks the end of the first painting from now on.
    void watchFirstFrame();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    qint64 m_processStart; // CLOCK_BOOTTIME, ms
    std::optional<qint64> m_firstFrame;
};

} // namespace Host
