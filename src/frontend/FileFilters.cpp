#include "frontend/FileFilters.h"

namespace trident::FileFilters {

QStringList ToNameFilters(const QString& classic) {
    const QStringList parts = classic.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (QString& pattern : patterns) {
            pattern = pattern.trimmed();
            if (pattern == QLatin1String("*.*")) pattern = QStringLiteral("*");
        }
        filters << parts[i] + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) +
                       QLatin1Char(')');
    }
    return filters;
}

QString NameFilterFor(const QStringList& filters, const QString& caption) {
    for (const QString& filter : filters)
        if (filter.left(filter.lastIndexOf(QStringLiteral(" ("))) == caption) return filter;
    return {};
}

} // namespace trident::FileFilters
