#include "Identifiers.h"

#include <QCoreApplication>
#include <QMutex>
#include <QRandomGenerator>
#include <QUuid>

#include <array>
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

/// A random one, version 4. The process's generator is seeded by the system's once; texts with very many blocks of code
/// ask for very many.
QUuid randomUuid()
{
    std::array<quint32, 4> words{};
    QRandomGenerator::global()->fillRange(words.data(), static_cast<qsizetype>(words.size()));
    words[1] = (words[1] & 0xFFFF0FFFU) | 0x4000U;
    words[2] = (words[2] & 0x3FFFFFFFU) | 0x80000000U;
    const auto byte = [&words](size_t index) {
        return static_cast<uchar>(words[2 + index / 4] >> (24 - index % 4 * 8));
    };
    return QUuid(words[0], static_cast<ushort>(words[1] >> 16), static_cast<ushort>(words[1]), byte(0), byte(1),
                 byte(2), byte(3), byte(4), byte(5), byte(6), byte(7));
}

QString replaced()
{
    QMutexLocker lock(&source().mutex);
    return source().make ? source().make() : QString();
}

} // namespace

QString uuidString()
{
    QString text = replaced();
    if (text.isNull()) {
        text = randomUuid().toString(QUuid::WithoutBraces);
        for (QChar &digit : text) {
            if (digit >= u'a') {
                digit = QChar(digit.unicode() - u'a' + u'A');
            }
        }
    }
    return text;
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
