// render_icon SVG SIZE PNG: draws an icon at a size in pixels, as the build does for the sizes that desktops ask for.

#include <QByteArray>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList words = QGuiApplication::arguments();
    const int size = words.size() == 4 ? words[2].toInt() : 0;
    if (size <= 0 || size > 4096) {
        std::fprintf(stderr, "usage: render_icon SVG SIZE PNG\n");
        return 2;
    }
    QSvgRenderer renderer(words[1]);
    if (!renderer.isValid()) {
        std::fprintf(stderr, "render_icon: %s is no picture\n", argv[1]);
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    painter.end();
    if (!image.save(words[3], "PNG")) {
        std::fprintf(stderr, "render_icon: %s could not be written\n", argv[3]);
        return 1;
    }
    return 0;
}
