#include "LocalHttpServer.h"
#include "core/interchange/LinkTableModel.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>

using namespace std::chrono_literals;

namespace {

// A port on this machine where nobody listens.
quint16 ClosedPort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

// The text of one cell, by default the status.
QString Cell(const LinkTableModel& Model, int Row, int Column = LinkTableModel::StatusColumn)
{
    return Model.index(Row, Column).data().toString();
}

// Checks every row and waits for the end.
bool CheckedAll(LinkTableModel& Model)
{
    QSignalSpy finished(&Model, &LinkTableModel::Finished);
    Model.CheckAll();
    return !Model.IsChecking() || finished.wait(20000);
}

} // namespace

class TestLinkChecker : public QObject
{
    Q_OBJECT
private slots:
    void everyAnswerEndsInAClearStatus()
    {
        const auto at = [this](const char* path) { return m_server.Url(path).toString(); };
        // Each link with the status its check ends in.
        const QList<std::pair<QString, QString>> rows{
            {at("/ok"), "OK 200"},
            {at("/moved"), "Moved → " + at("/ok")},
            {at("/missing"), "Broken 404"},
            {at("/error"), "Server error 500"},
            {at("/unavailable"), "Server error 503"},
            {at("/nohead"), "OK 200"},
            {at("/slow"), "Timed out"},
            {at("/loop"), "Redirect loop"},
            {at("/drop"), "Unreachable: connection closed without an answer"},
            {at("/huge"), "OK 200"},
            {at("/hugemissing"), "Broken 404"},
            {QStringLiteral("http://127.0.0.1:%1/").arg(ClosedPort()),
             "Unreachable: connection refused"},
            {"ok#second-look", "OK 200"},
            {"mailto:ann@x.org", "Not checked (mailto)"},
            {"http://s.com:99999/", "Malformed: bad port"},
            {QString(), "No address"}};
        QStringList links;
        for (const auto& row : rows)
            links << row.first;

        LinkTableModel model;
        model.SetTimeout(600ms);
        QSignalSpy finished(&model, &LinkTableModel::Finished);
        model.SetLinks(links);
        model.SetBase(m_server.Url("/").toString(), QString());
        QCOMPARE(Cell(model, 0, LinkTableModel::LinkColumn), QStringLiteral("Shape #1"));
        QCOMPARE(Cell(model, 15, LinkTableModel::LinkColumn), QStringLiteral("Default area"));
        // Addresses and listing without asking anybody: the URL checker's test.
        model.CheckAll();
        QVERIFY(model.IsChecking());
        QCOMPARE(Cell(model, 0), QStringLiteral("Checking…"));
        QVERIFY(model.Summary().startsWith(QStringLiteral("Checking… 16 links: ")));
        QVERIFY(finished.wait(20000));
        QCOMPARE(finished.size(), 1);
        for (int row = 0; row < links.size(); ++row)
            QCOMPARE(Cell(model, row), rows[row].second);
        // The count of broken rows is the summary's (and the command line's exit status).
        QCOMPARE(model.Summary(),
                 QStringLiteral("16 links: 9 broken, 4 OK, 1 moved, 2 not checked."));
        QVERIFY(model.index(2, 0).data(Qt::BackgroundRole).isValid());
        QVERIFY(!model.index(0, 0).data(Qt::BackgroundRole).isValid());

        // HEAD first, GET only where HEAD was refused; one request for the two rows that
        // differ only in their fragment.
        QCOMPARE(m_server.Requests("HEAD /nohead"), 1);
        QCOMPARE(m_server.Requests("GET /nohead"), 1);
        QCOMPARE(m_server.Requests("GET /ok"), 0);
        QCOMPARE(m_server.Requests("HEAD /ok"), 2); // the row, and the end of /moved
        // The loop was seen, not run round until some limit.
        QCOMPARE(m_server.Requests("HEAD /loop"), 1);
        QCOMPARE(m_server.Requests("HEAD /loop2"), 1);
        // No body is read: the endless ones stop right after their headers.
        QTest::qWait(100);
        QVERIFY2(m_server.HugeBytesSent() < 8 * 1024 * 1024,
                 QByteArray::number(m_server.HugeBytesSent()));
    }

    // An edited row checked again through the URL checker: its own test.
    void newBaseForgetsWhatWasLearnt()
    {
        LinkTableModel model;
        model.SetLinks({QStringLiteral("ok"), QString()});
        model.SetBase(m_server.Url("/").toString(), QString());
        QVERIFY(CheckedAll(model));
        QCOMPARE(Cell(model, 0), QStringLiteral("OK 200"));
        QCOMPARE(Cell(model, 0, LinkTableModel::UrlColumn), QStringLiteral("ok"));
        model.SetBase(QStringLiteral("http://127.0.0.1:1/"), QString());
        QCOMPARE(Cell(model, 0), QString());
        QCOMPARE(Cell(model, 0, LinkTableModel::AddressColumn),
                 QStringLiteral("http://127.0.0.1:1/ok"));
    }

    void cancelStopsTheChecksInFlight()
    {
        const int asked = m_server.Requests("HEAD /slow");
        auto model = std::make_unique<LinkTableModel>();
        QSignalSpy finished(model.get(), &LinkTableModel::Finished);
        model->SetLinks({m_server.Url("/slow").toString(), m_server.Url("/ok?cancel").toString()});
        model->CheckAll();
        QTRY_COMPARE(m_server.Requests("HEAD /slow"), asked + 1);
        // Not checking and no status after a cancel: the URL checker's test, on closing.
        model->Cancel();
        QTest::qWait(100);
        QCOMPARE(finished.size(), 0);
        // Checking again after a cancel works, and so does dropping the model mid-check.
        model->CheckAll();
        QTRY_COMPARE(m_server.Requests("HEAD /slow"), asked + 2);
        model.reset();
        QTest::qWait(50);
    }

    void manyLinksAreCheckedAFewAtATime()
    {
        QStringList links;
        for (int i = 0; i < 300; ++i)
            links << m_server.Url(QStringLiteral("/ok?n=%1").arg(i)).toString();
        links << QString();
        LinkTableModel model;
        model.SetLinks(links);
        QVERIFY(CheckedAll(model));
        QCOMPARE(model.Summary(), QStringLiteral("301 links: 0 broken, 300 OK, 1 not checked."));
        QVERIFY(m_server.MaxOpenConnections() <= 6);
        QCOMPARE(m_server.Requests("HEAD /ok?n=299"), 1);
    }

private:
    LocalHttpServer m_server;
};

QTEST_GUILESS_MAIN(TestLinkChecker)
#include "tst_linkchecker.moc"
