// The pictures in the rows of the note list.

#include "WindowFixture.h"

#include <Store/NSManagedObjectContext.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteFilesDowloadedNotification.h>
#include <Window/NoteListView.h>

#include <QFile>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

class NoteRowPicture : public WindowFixture
{
protected:
    [[nodiscard]] QString picture(const QString &name, Qt::GlobalColor color) const
    {
        QImage image(50, 50, QImage::Format_RGB32);
        image.fill(color);
        const QString path = folder.path(name);
        EXPECT_TRUE(image.save(path));
        return path;
    }
    /// Whether a good part of the list is of a colour.
    [[nodiscard]] bool shows(QColor color) const
    {
        const QImage image = window().noteList().grab().toImage().convertToFormat(QImage::Format_RGB32);
        int found = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                found += image.pixelColor(x, y) == color ? 1 : 0;
            }
        }
        return found > 500;
    }
};

TEST_F(NoteRowPicture, FollowsItsFile)
{
    launch();
    const auto file = QBNoteFile::factoryNoteFileForFileURL(QUrl::fromLocalFile(picture(u"red.png"_s, Qt::red)), moc());
    const QString path = file->fileURL()->toLocalFile();
    ASSERT_TRUE(QFile::rename(path, path + u".away"_s)) << "it comes later";
    const auto note = QBNote::noteWithText(QString(u"# Picture\n" % file->textRepresentation()), 0, moc());
    ASSERT_TRUE(moc().save());
    settle();
    EXPECT_FALSE(shows(Qt::red));
    const auto tell = [&file] { QBNoteFilesDowloadedNotification().notify({file->uniqueIdentifier()}); };

    ASSERT_TRUE(QFile::rename(path + u".away"_s, path));
    tell();
    ASSERT_TRUE(QTest::qWaitFor([this] { return shows(Qt::red); }));

    ASSERT_TRUE(QFile::remove(path) && QFile::copy(picture(u"blue.png"_s, Qt::blue), path));
    file->updateFileMetadata();
    file->deleteFileThumbnails();
    QBNoteFilesDowloadedNotification().notify({u"another"_s});
    settle();
    EXPECT_TRUE(shows(Qt::red)) << "nobody told of it";
    tell();
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(Qt::blue) && !shows(Qt::red); }));
}

} // namespace

} // namespace quib::tests
