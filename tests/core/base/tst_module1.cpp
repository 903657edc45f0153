#include "core/base/Module1.h"

#include <QTest>

class TestModule1 : public QObject
{
    Q_OBJECT
private slots:
    void cutAtNulAndTitle()
    {
        const QChar nul(0);
        QCOMPARE(Module1::CutAtNul(QStringLiteral("plan.imp") + nul + "   "),
                 QStringLiteral("plan.imp"));
        QCOMPARE(Module1::CutAtNul(QStringLiteral("a") + nul + "b" + nul), QStringLiteral("a"));
        QCOMPARE(Module1::FileTitle(QStringLiteral("C:\\maps\\  my map.imp  ")),
                 QStringLiteral("my map.imp"));
    }

    void pathParts()
    {
        // The last / or \ ends the folder.
        for (const auto& [path, folder] :
             {std::pair("C:\\maps\\a.imp", "C:\\maps\\"),
              std::pair("/home/ann/pic.gif", "/home/ann/"),
              std::pair("D:\\web/img.gif", "D:\\web/"), std::pair("C:/maps\\x.imp", "C:/maps\\"),
              std::pair("plan.imp", ""), std::pair("C:\\maps\\", "C:\\maps\\")}) {
            QCOMPARE(Module1::FolderOfPath(path), QString::fromUtf8(folder));
            QCOMPARE(Module1::FileNameOfPath(path), QString::fromUtf8(path).mid(qstrlen(folder)));
        }
    }

    void colourParts()
    {
        const int colour = 5 | 10 << 8 | 255 << 16;
        QVERIFY(Module1::RedOf(colour) == 5 && Module1::GreenOf(colour) == 10);
        QCOMPARE(Module1::BlueOf(colour), 255);
        QCOMPARE(Module1::ColorToHex(colour), QStringLiteral("050AFF"));
        // The high byte is no colour.
        QCOMPARE(Module1::ColorToHex(0x7F0A0B0C), QStringLiteral("0C0B0A"));
    }

    void pointInRect()
    {
        // The rectangle (10, 10, 20, 20): both edges are inside.
        QVERIFY(Module1::PointInRect(10, 10, 10, 10, 20, 20));
        QVERIFY(Module1::PointInRect(20, 20, 10, 10, 20, 20));
        for (const QPoint& p : {QPoint(21, 10), QPoint(9, 15), QPoint(15, 9), QPoint(15, 21)})
            QVERIFY(!Module1::PointInRect(p.x(), p.y(), 10, 10, 20, 20));
        // A rectangle given the wrong way round holds nothing.
        QVERIFY(!Module1::PointInRect(15, 15, 20, 20, 10, 10));
    }
};

QTEST_APPLESS_MAIN(TestModule1)
#include "tst_module1.moc"
