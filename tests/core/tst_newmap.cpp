#include "interchange/MapFile.h"
#include "interchange/NewMap.h"
#include "interchange/PictureLoader.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

class TestNewMap : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void takesThePictureAtItsOwnSize_data();
    void takesThePictureAtItsOwnSize();
    void relativePathGetsItsFolder();
    void refusesWhatIsNoPicture_data();
    void refusesWhatIsNoPicture();
    void savedNewMapReopens();

private:
    QTemporaryDir m_dir;
};

void TestNewMap::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QImage picture(64, 40, QImage::Format_RGB32);
    picture.fill(Qt::yellow);
    QVERIFY(picture.save(m_dir.filePath("shore.png")));
    QVERIFY(picture.save(m_dir.filePath("shore.bmp")));
    QVERIFY(picture.save(m_dir.filePath("shore.jpg")));
    // The smallest GIF: one pixel, built by hand since Qt writes no GIF.
    const QByteArray gif("GIF89a\x01\x00\x01\x00\x80\x00\x00\x00\x00\x00\xff\xff\xff!\xf9"
                         "\x04\x01\x00\x00\x00\x00,\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02"
                         "\x02"
                         "D\x01\x00;",
                         43);
    QFile file(m_dir.filePath("dot.gif"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(gif), qint64(gif.size()));
}

void TestNewMap::takesThePictureAtItsOwnSize_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");
    QTest::newRow("png") << "shore.png" << QSize(64, 40);
    QTest::newRow("bitmap") << "shore.bmp" << QSize(64, 40);
    QTest::newRow("jpeg") << "shore.jpg" << QSize(64, 40);
    QTest::newRow("gif") << "dot.gif" << QSize(1, 1);
}

void TestNewMap::takesThePictureAtItsOwnSize()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    const NewMap::Result made = NewMap::FromPicture(m_dir.filePath(name));
    QVERIFY(made.ok);
    QVERIFY(made.message.isEmpty());
    const MapDocument& doc = made.document;
    QCOMPARE(doc.OrigPic.size(), size);
    QCOMPARE(doc.RealWidth, size.width());
    QCOMPARE(doc.RealHeight, size.height());
    QCOMPARE(doc.SWidth, size.width());
    QCOMPARE(doc.SHeight, size.height());
    QCOMPARE(doc.ZoomLevel, 1.0);
    QCOMPARE(doc.ImageName, name);
    QCOMPARE(doc.ImagePath, QDir::toNativeSeparators(m_dir.path()) + QDir::separator());
    // Everything else is a new map window's default.
    QCOMPARE(doc.ItemCount(), std::int16_t(-1));
    QCOMPARE(doc.MapName, QStringLiteral("MyMap"));
    QCOMPARE(doc.GridSpacing, 20.0);
}

void TestNewMap::relativePathGetsItsFolder()
{
    const QString previous = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_dir.path()));
    const NewMap::Result made = NewMap::FromPicture(QStringLiteral("shore.png"));
    QDir::setCurrent(previous);
    QVERIFY(made.ok);
    QCOMPARE(made.document.ImageName, QStringLiteral("shore.png"));
    QCOMPARE(made.document.ImagePath, QDir::toNativeSeparators(m_dir.path()) + QDir::separator());
}

void TestNewMap::refusesWhatIsNoPicture_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text file") << "notes.png" << QByteArray("not a picture\r\n");
    QTest::newRow("empty file") << "empty.jpg" << QByteArray();
    QTest::newRow("missing file") << "missing.gif" << QByteArray("-");
}

void TestNewMap::refusesWhatIsNoPicture()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    const QString path = m_dir.filePath(name);
    if (content != "-") {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    const NewMap::Result made = NewMap::FromPicture(path);
    QVERIFY(!made.ok);
    QCOMPARE(made.message, PictureLoader::CannotReadMessage(path));
    QVERIFY(made.message.contains(QDir::toNativeSeparators(path)));
    QVERIFY(made.document.OrigPic.isNull());
}

void TestNewMap::savedNewMapReopens()
{
    const NewMap::Result made = NewMap::FromPicture(m_dir.filePath("shore.png"));
    QVERIFY(made.ok);
    const QString path = m_dir.filePath("new.imp");
    QVERIFY(MapFile::SaveMap(made.document, path).ok);
    const MapFile::ReadResult read = MapFile::OpenMapFile(path);
    QVERIFY(read.ok);
    QCOMPARE(read.document.ImageName, QStringLiteral("shore.png"));
    QCOMPARE(read.document.SWidth, 64);
    QCOMPARE(read.document.OrigPic.size(), QSize(64, 40));
}

QTEST_GUILESS_MAIN(TestNewMap)
#include "tst_newmap.moc"
