#include "Identifiers.h"

#include <QCoreApplication>
#include <QMutex>
#include <QUuid>

#include <atomic>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

struct Source
{
    QMutex mutex;
    std::function<QString()> make;
};

Source &source()
{
    static Source installed;
    return installed;
}

QString replaced()
{
    QMutexLocker lock(&source().mutex);
    return source().make ? source().make() : QString();
}

} // namespace

QString uuidString()
{
    const QString text = replaced();
    return text.isNull() ? QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper() : text;
}

QString globallyUniqueString()
{
    static std::atomic<quint64> count = 0;
    const QString text = replaced();
    if (!text.isNull()) {
        return text;
    }
    return u"%1-%2-%3"_s.arg(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(),
                             QString::number(QCoreApplication::applicationPid(), 16).toUpper(),
                             QString::number(++count, 16).toUpper().rightJustified(8, u'0'));
}

void setIdentifierSource(std::function<QString()> make)
{
    QMutexLocker lock(&source().mutex);
    source().make = std::move(make);
}

} // namespace quib
