#include "frontend/ChangeWatcher.h"

#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QTimer>

namespace trident {

ChangeWatcher::ChangeWatcher(QObject* parent)
    : QObject(parent), pWatcher(new QFileSystemWatcher(this)), pQuiet(new QTimer(this)) {
    pQuiet->setObjectName(QStringLiteral("tmrQuiet"));
    pQuiet->setSingleShot(true);
    pQuiet->setInterval(QuietTime);
    connect(pWatcher, &QFileSystemWatcher::fileChanged, this, &ChangeWatcher::Changed);
    connect(pQuiet, &QTimer::timeout, this, &ChangeWatcher::Settled);
}

void ChangeWatcher::Watch(const QStringList& files) {
    if (const QStringList old = pWatcher->files(); !old.isEmpty()) pWatcher->removePaths(old);
    pFiles.clear();
    for (const QString& file : files)
        if (QFileInfo(file).isFile() && !pFiles.contains(file)) pFiles.append(file);
    if (!pFiles.isEmpty()) pWatcher->addPaths(pFiles);
}

void ChangeWatcher::Changed(const QString& path) {
    // Editors that save by writing a new file and renaming it over the old
    // one leave the watcher looking at nothing: look at the new file.
    if (!pWatcher->files().contains(path) && QFileInfo(path).isFile()) pWatcher->addPath(path);
    pQuiet->start();
}

} // namespace trident
