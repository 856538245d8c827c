#include "Output.h"

#include <Text/Folding.h>

#include <QJsonDocument>

#include <cstdio>

#include <unistd.h>

namespace quib::cli {

namespace {

bool s_outputFailed = false;

void write(const QByteArray &bytes)
{
    if (std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout) !=
        static_cast<size_t>(bytes.size())) {
        s_outputFailed = true;
    }
}

} // namespace

void print(const QString &text)
{
    write(toUtf8Lossless(text));
}

void printLine(const QString &line)
{
    write(toUtf8Lossless(line) + '\n');
}

void printJson(const QJsonObject &object)
{
    write(QJsonDocument(object).toJson(isTerminal() ? QJsonDocument::Indented : QJsonDocument::Compact).trimmed() +
          '\n');
}

void printJson(const QJsonArray &array)
{
    write(QJsonDocument(array).toJson(isTerminal() ? QJsonDocument::Indented : QJsonDocument::Compact).trimmed() +
          '\n');
}

void complain(const QString &message)
{
    const QByteArray line = "quibctl: " + toUtf8Lossless(message) + '\n';
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stderr);
}

void showProgress(const QString &message)
{
    if (isatty(STDERR_FILENO) == 0) {
        return;
    }
    const QByteArray line = "\r\x1b[K" + toUtf8Lossless(message);
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stderr);
    std::fflush(stderr);
}

bool isTerminal()
{
    return isatty(STDOUT_FILENO) != 0;
}

bool flushOutput()
{
    return std::fflush(stdout) == 0 && !s_outputFailed;
}

QString singleLine(const QString &text)
{
    QString line = text;
    for (QChar &character : line) {
        if (character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
            character == QChar::ParagraphSeparator) {
            character = u' ';
        }
    }
    return line;
}

} // namespace quib::cli
