#pragma once

#include "nodes/model/links/ResourceLink.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

/// The directory of the projects made from now on, with pictures good and bad.
class PictureFiles
{
public:
    PictureFiles()
    {
        QDir::setCurrent(m_directory.path());
        Nodes::ResourceLink::SetBaseDirectory(m_directory.path().toStdString());
        QImage halves(20, 10, QImage::Format_RGB32);
        halves.fill(Qt::blue);
        QPainter(&halves).fillRect(0, 0, 10, 10, Qt::red);
        halves.save(path("halves.png"));
        write("square.svg", R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16">)"
                            R"(<rect width="16" height="8" fill="#00ff00"/></svg>)");
        // Red, then blue, 4 by 2 pixels.
        write("blinks.gif",
              QByteArray::fromBase64("R0lGODlhBAACAPAAAP8AAAAAACH5BAAFAAAAIf8LTkVUU0NBUEUyLjADAQAAA"
                                     "CwAAAAABAACAAACA4RvBQAh+QQABQAAACwAAAAABAACAIAAAP8AAAACA4RvBQ"
                                     "A7"));
        QFile good(path("halves.png"));
        if (!good.open(QIODevice::ReadOnly))
            qFatal("no picture");
        write("cut.png", good.read(40));
        write("text.png", "this is no picture");
        write("empty.png", "");
        // Its header claims 40000 x 40000 pixels.
        write("large.png",
              QByteArray::fromBase64(
                  "iVBORw0KGgoAAAANSUhEUgAAnEAAAJxAAQAAAAB5dzOoAAAAKklEQVR4nO3BMQEAAADCoPVPbQ0PoAAA"
                  "AAAAAAAAAAAAAAAAAAAAAAB4MU4kAAEU9iBaAAAAAElFTkSuQmCC"));
        write("huge.svg",
              R"(<svg xmlns="http://www.w3.org/2000/svg" width="90000" height="90000"/>)");
    }
    QString path(const QString &name) const { return m_directory.filePath(name); }
    void write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write");
    }
    static Nodes::ResourcePtr load(const char *name) { return Nodes::ResourceLink(name).Load(); }

private:
    QTemporaryDir m_directory;
};
