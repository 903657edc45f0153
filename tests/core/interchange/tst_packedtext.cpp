#include "core/interchange/PackedText.h"

#include <QStringList>
#include <QTest>
#include <optional>
#include <utility>
#include <vector>

// Values that share blocks must behave as QStrings of their own: changing one leaves the
// rest alone, and they outlive the packer that made them.

namespace {

// Value i: i's digits repeated to lengths from 0 to well past a block, and back.
QByteArray Source(int i)
{
    const int length = (i * 97) % 6000;
    QByteArray text = QByteArray::number(i).repeated(length / 4 + 1);
    text.truncate(length);
    return text;
}

} // namespace

class TestPackedText : public QObject
{
    Q_OBJECT
private slots:
    void valuesReadBackAcrossBlocks()
    {
        // Values side by side in one text, as a file holds them: every other one may be read
        // past its end, which must change neither it nor the values packed before it.
        QByteArray text;
        std::vector<std::pair<qsizetype, qsizetype>> spans;
        for (int i = 0; i < 3000; ++i) {
            spans.emplace_back(text.size(), Source(i).size());
            text += Source(i) + "\r\n";
        }
        PackedText packed;
        QStringList values;
        for (int i = 0; i < 3000; ++i) {
            const auto [start, size] = spans[std::size_t(i)];
            const qsizetype readable = i % 2 == 0 ? text.size() - start : size;
            values.append(packed.Ascii(QByteArrayView(text).sliced(start, size), readable));
        }
        for (int i = 0; i < values.size(); ++i) {
            const QString& value = values[i];
            QCOMPARE(value, QString::fromLatin1(Source(i)));
            // An empty value is empty text, never a missing one; every value ends like a
            // QString's own characters for callers that read it as a C string.
            QVERIFY(!value.isNull());
            QCOMPARE(value.utf16()[value.size()], u'\0');
        }
    }

    void changingOneValueLeavesTheOthers()
    {
        PackedText packed;
        QString first = packed.Ascii("first");
        QString second = packed.Ascii("second");
        QString third = packed.Ascii("third");
        const QString copy = second;
        first.append(QStringLiteral(" and more"));
        second[0] = QLatin1Char('S');
        third.clear();
        QString fourth = packed.Ascii("fourth");
        fourth.replace(QStringLiteral("our"), QStringLiteral("if"));
        QCOMPARE(first, QStringLiteral("first and more"));
        QCOMPARE(second, QStringLiteral("Second"));
        QCOMPARE(copy, QStringLiteral("second"));
        QCOMPARE(third, QString());
        QCOMPARE(fourth, QStringLiteral("fifth"));
        // Values packed after the changes are not disturbed by them either.
        const QString fifth = packed.Ascii("fifth value");
        QCOMPARE(fifth, QStringLiteral("fifth value"));
        QCOMPARE(copy, QStringLiteral("second"));
    }

    void valuesOutliveThePacker()
    {
        QStringList values;
        {
            std::optional<PackedText> packed(std::in_place);
            for (int i = 0; i < 200; ++i)
                values.append(packed->Ascii(Source(i)));
            packed.reset();
            QCOMPARE(values[150], QString::fromLatin1(Source(150)));
        }
        // The last value left in its block may grow in place: nothing else uses the block.
        QString last = values.takeLast();
        values.clear();
        QVERIFY(last.isDetached());
        last.append(QString(5000, QLatin1Char('x')));
        QCOMPARE(last, QString::fromLatin1(Source(199)) + QString(5000, QLatin1Char('x')));
    }
};

QTEST_GUILESS_MAIN(TestPackedText)
#include "tst_packedtext.moc"
