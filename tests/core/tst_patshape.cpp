#include "shape/Numeric.h"
#include "shape/PatShape.h"

#include <QTest>

class TestPatShape : public QObject {
    Q_OBJECT
private slots:
    void newRectangleHasFourEqualPoints();
};

void TestPatShape::newRectangleHasFourEqualPoints()
{
    PatShape s;
    s.SetInfo(nullptr, 5, Rectangle, 1.0, 10, 20);
    QVERIFY(s.IsShapeDone());
    QCOMPARE(s.NumOfPoints(), std::int16_t(3));
}

QTEST_APPLESS_MAIN(TestPatShape)
#include "tst_patshape.moc"
