#pragma once

#include <QApplication>
#include <QFile>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace trident::guitest {

// Runs `action` on the next modal dialog of type T once it is open, from
// inside the dialog's own event loop. The action must close the dialog;
// checks belong after the call that opened it, on what the action saw.
template <class T> void WhenModal(std::function<void(T*)> action, int triesLeft = 1000) {
    QTimer::singleShot(10, [action, triesLeft] {
        if (auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget())) {
            action(dialog);
            return;
        }
        if (triesLeft > 0) WhenModal<T>(action, triesLeft - 1);
    });
}

inline QByteArray ReadAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

inline void WriteAll(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) file.write(bytes);
}

// A view's text as the batch tool writes it: its lines end in CR LF.
inline QByteArray WithCrLf(const QString& viewText) {
    return viewText.toLatin1().replace("\n", "\r\n");
}

} // namespace trident::guitest
