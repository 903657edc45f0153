#include "frame/Module1.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

class TestModule1 : public QObject
{
    Q_OBJECT
private slots:
    void cutAtNul_data();
    void cutAtNul();
    void pathParts_data();
    void pathParts();
    void fileTitleTrimsBlanks();
    void applicationFolderEndsWithSeparator();
    void colourParts_data();
    void colourParts();
    void pointInRect_data();
    void pointInRect();
};

void TestModule1::cutAtNul_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("cut");
    QTest::newRow("no NUL") << "plan.imp"
                            << "plan.imp";
    QTest::newRow("dialog buffer")
        << QStringLiteral("plan.imp") + QChar(0) + QString(20, ' ') << "plan.imp";
    QTest::newRow("first NUL wins") << QStringLiteral("a") + QChar(0) + "b" + QChar(0) << "a";
    QTest::newRow("leading NUL") << QString(QChar(0)) + "x"
                                 << "";
    QTest::newRow("empty") << ""
                           << "";
}

void TestModule1::cutAtNul()
{
    QFETCH(QString, text);
    QFETCH(QString, cut);
    QCOMPARE(Module1::CutAtNul(text), cut);
}

void TestModule1::pathParts_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::newRow("windows") << "C:\\maps\\a.imp"
                             << "C:\\maps\\"
                             << "a.imp";
    QTest::newRow("posix") << "/home/ann/maps/pic.gif"
                           << "/home/ann/maps/"
                           << "pic.gif";
    QTest::newRow("mixed, last separator wins") << "C:\\maps/sub\\x.imp"
                                                << "C:\\maps/sub\\"
                                                << "x.imp";
    QTest::newRow("slash after backslash") << "D:\\web/img.gif"
                                           << "D:\\web/"
                                           << "img.gif";
    QTest::newRow("no separator") << "plan.imp"
                                  << ""
                                  << "plan.imp";
    QTest::newRow("folder only") << "C:\\maps\\"
                                 << "C:\\maps\\"
                                 << "";
    QTest::newRow("root") << "/"
                          << "/"
                          << "";
    QTest::newRow("empty") << ""
                           << ""
                           << "";
    QTest::newRow("UNC share") << "\\\\server\\share\\m.imp"
                               << "\\\\server\\share\\"
                               << "m.imp";
}

void TestModule1::pathParts()
{
    QFETCH(QString, path);
    QFETCH(QString, folder);
    QFETCH(QString, name);
    QCOMPARE(Module1::FolderOfPath(path), folder);
    QCOMPARE(Module1::FileNameOfPath(path), name);
    // The two parts always make the path again.
    QCOMPARE(Module1::FolderOfPath(path) + Module1::FileNameOfPath(path), path);
}

void TestModule1::fileTitleTrimsBlanks()
{
    QCOMPARE(Module1::FileTitle(QStringLiteral("C:\\maps\\  my map.imp  ")),
             QStringLiteral("my map.imp"));
    QCOMPARE(Module1::FileTitle(QStringLiteral("/home/ann/plan.imp")), QStringLiteral("plan.imp"));
}

void TestModule1::applicationFolderEndsWithSeparator()
{
    const QString folder = Module1::ApplicationFolder();
    QVERIFY(folder.endsWith(QDir::separator()));
    QVERIFY(QFileInfo(folder).isDir());
    const QString writable = Module1::WritableProgramFolder();
    QVERIFY(writable.endsWith(QDir::separator()));
    QVERIFY(QFileInfo(writable).isDir());
    QVERIFY(QFileInfo(writable).isWritable());
}

void TestModule1::colourParts_data()
{
    QTest::addColumn<int>("colour");
    QTest::addColumn<int>("red");
    QTest::addColumn<int>("green");
    QTest::addColumn<int>("blue");
    QTest::addColumn<QString>("hex");
    QTest::newRow("050AFF") << (5 | 10 << 8 | 255 << 16) << 5 << 10 << 255 << "050AFF";
    QTest::newRow("FF8040") << (255 | 128 << 8 | 64 << 16) << 255 << 128 << 64 << "FF8040";
    QTest::newRow("FF0800") << (255 | 8 << 8) << 255 << 8 << 0 << "FF0800";
    QTest::newRow("black") << 0 << 0 << 0 << 0 << "000000";
    QTest::newRow("white") << 0xFFFFFF << 255 << 255 << 255 << "FFFFFF";
    QTest::newRow("high byte ignored") << 0x7F0A0B0C << 12 << 11 << 10 << "0C0B0A";
}

void TestModule1::colourParts()
{
    QFETCH(int, colour);
    QFETCH(int, red);
    QFETCH(int, green);
    QFETCH(int, blue);
    QFETCH(QString, hex);
    QCOMPARE(Module1::RedOf(colour), red);
    QCOMPARE(Module1::GreenOf(colour), green);
    QCOMPARE(Module1::BlueOf(colour), blue);
    QCOMPARE(Module1::ColorToHex(colour), hex);
}

void TestModule1::pointInRect_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<bool>("inside");
    // The rectangle (10, 10, 20, 20); both edges count as inside.
    QTest::newRow("top-left corner") << 10 << 10 << true;
    QTest::newRow("bottom-right corner") << 20 << 20 << true;
    QTest::newRow("middle") << 15 << 15 << true;
    QTest::newRow("right of it") << 21 << 10 << false;
    QTest::newRow("left of it") << 9 << 15 << false;
    QTest::newRow("above it") << 15 << 9 << false;
    QTest::newRow("below it") << 15 << 21 << false;
}

void TestModule1::pointInRect()
{
    QFETCH(int, x);
    QFETCH(int, y);
    QFETCH(bool, inside);
    QCOMPARE(Module1::PointInRect(x, y, 10, 10, 20, 20), inside);
    // A rectangle given the wrong way round holds nothing.
    QVERIFY(!Module1::PointInRect(x, y, 20, 20, 10, 10));
}

QTEST_APPLESS_MAIN(TestModule1)
#include "tst_module1.moc"
