#pragma once

#include <QObject>
#include <QStringList>

class QFileSystemWatcher;
class QTimer;

namespace trident {

// Watches the files a run read and says once when they have changed and
// then stayed quiet for a moment: an editor that saves several files, or
// writes one in several steps, starts one new run, not several.
class ChangeWatcher : public QObject {
    Q_OBJECT

  public:
    static constexpr int QuietTime = 400; // milliseconds

    explicit ChangeWatcher(QObject* parent = nullptr);

    // Watches exactly `files` (those that exist) from now on.
    void Watch(const QStringList& files);
    QStringList Files() const { return pFiles; }

  signals:
    void Settled();

  private:
    void Changed(const QString& path);

    QFileSystemWatcher* pWatcher;
    QTimer* pQuiet;
    QStringList pFiles;
};

} // namespace trident
