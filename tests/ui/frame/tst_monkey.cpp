#include "FakeCanvasHost.h"
#include "FileBytes.h"
#include "FrameFixture.h"
#include "core/interchange/MapFile.h"
#include "ui/canvas/CanvasSurface.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QRandomGenerator>

namespace {

// The frame's commands a monkey may pick; the URL checker (an embedded browser) and Exit
// are left out.
const char* const Commands[] = {
    "CutShape",     "Copyshape",   "PasteShape",  "DeleteShape",     "MorRectangle",
    "MorCircle",    "MorPolygon",  "smallsize",   "largesize",       "CustomZoom",
    "theimagesize", "Gridoptions", "MapColors",   "ShapeProperties", "RectangleMode",
    "CircleMode",   "PolygonMode", "pointermode", "generatecode",    "ConvertToShapes",
    "Cascade",      "Tile",        "NewMap"};

} // namespace

// A long random run of user events on the real frame and map windows: presses, drags,
// clicks and double clicks in every mode, keys, menu commands with their dialogs filled
// in and confirmed or cancelled, and saves. After every event, and between a press and its
// release, each map's shape list is whole and coloured by its stacking; every save reads
// back as the map was shown and, read twice, saves to the same bytes.
//
// VANTREL_MONKEY_SEED repeats a run, VANTREL_MONKEY_EVENTS and VANTREL_MONKEY_SECONDS
// make it longer than the default bounded run.
class TestMonkey : public QObject, FrameFixture
{
    Q_OBJECT
    QRandomGenerator m_random;
    int m_saves = 0;
    // The last events, to say what led to a failure.
    QStringList m_trail;

    void Note(const QString& Event)
    {
        m_trail.append(Event);
        if (m_trail.size() > 12)
            m_trail.removeFirst();
    }

    int Pick(int n) { return static_cast<int>(m_random.bounded(n)); }
    // What users type into the dialogs' fields: numbers in and out of range, links, texts
    // with quotes, commas, tabs and characters beyond Windows-1252.
    QString AnyText()
    {
        static const QStringList typed =
            QString::fromUtf8("|0|7|150|100|-5|99999|  |http://a.example/?q=1,2|#|say \"hi\"|x\ty|"
                              "\xc3\x9c"
                              "n\xc3\xaf"
                              "code \xe2\x82\xac|a,b|\xe6\x97\xa5\xe6\x9c\xac")
                .split(QLatin1Char('|'));
        return typed.at(Pick(int(typed.size())));
    }

    void AnswerDialog(QDialog& dialog)
    {
        for (QLineEdit* edit : dialog.findChildren<QLineEdit*>()) {
            if (Pick(3) == 0)
                edit->setText(AnyText());
        }
        // Grid display and snapping among them.
        for (QCheckBox* box : dialog.findChildren<QCheckBox*>()) {
            if (Pick(3) == 0)
                box->toggle();
        }
        for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
            if (button->text().remove(QLatin1Char('&')) == QLatin1String("OK") && Pick(3) != 0 &&
                button->isEnabled()) {
                button->click();
                break;
            }
        }
        if (dialog.isVisible() || dialog.result() == QDialog::Rejected)
            dialog.reject();
    }

    QPoint AnyPoint(QWidget* surface)
    {
        // Mostly on the picture, sometimes just past its edges.
        return QPoint(Pick(surface->width() + 20) - 10, Pick(surface->height() + 20) - 10);
    }

    void NewMap()
    {
        m_ui->pictures.enqueue(m_dir.filePath(QStringLiteral("pic%1.png").arg(Pick(2))));
        Trigger("NewMap");
    }

    void Trigger(const char* name)
    {
        if (QAction* action = m_frame->findChild<QAction*>(QLatin1String(name));
            action != nullptr && action->isEnabled()) {
            Note(QLatin1String(name));
            action->trigger();
        }
    }

    void MouseEvent(QWidget* surface, int step)
    {
        const int kind = Pick(10);
        const Qt::MouseButton button = Pick(8) == 0 ? Qt::RightButton : Qt::LeftButton;
        QPoint at = AnyPoint(surface);
        const ShapeCanvas& map = *m_frame->ActiveMapWindow();
        if (map.Document().PolygonInProgress && Pick(3) == 0) {
            // Next to the first vertex, to close some polygons.
            const MapDocument& d = map.Document();
            const ShapePoint first = d.Shape(d.CurrentShape).Points().front();
            at = (QPointF(first.x, first.y) * map.ViewScaleFactor()).toPoint() +
                 QPoint(Pick(11) - 5, Pick(11) - 5);
        }
        if (kind < 4) {
            QTest::mousePress(surface, button, {}, at);
            Note(QString::asprintf("press at %d,%d button %d", at.x(), at.y(), int(button)));
            CheckMaps(step);
            for (int moves = Pick(4); moves > 0; --moves)
                QTest::mouseMove(surface, AnyPoint(surface));
            const QPoint to = AnyPoint(surface);
            QTest::mouseRelease(surface, button, {}, to);
            Note(QString::asprintf("release at %d,%d", to.x(), to.y()));
        } else if (kind < 8) {
            QTest::mouseClick(surface, button, {}, at);
            Note(QString::asprintf("click at %d,%d button %d", at.x(), at.y(), int(button)));
        } else {
            QTest::mouseDClick(surface, Qt::LeftButton, {}, at);
            Note(QString::asprintf("double click at %d,%d", at.x(), at.y()));
        }
    }

    void KeyEvent(QWidget* surface)
    {
        const Qt::Key keys[] = {Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Up,     Qt::Key_Down,
                                Qt::Key_Delete, Qt::Key_Escape, Qt::Key_Return, Qt::Key_Backspace,
                                Qt::Key_Tab,    Qt::Key_Space};
        if (Pick(4) == 0) {
            const QKeySequence::StandardKey standard[] = {
                QKeySequence::Cut,    QKeySequence::Copy,    QKeySequence::Paste,
                QKeySequence::ZoomIn, QKeySequence::ZoomOut, QKeySequence::Undo,
                QKeySequence::Redo};
            const QKeySequence sequence(standard[Pick(7)]);
            Note(sequence.toString());
            QTest::keySequence(m_frame, sequence);
        } else {
            const Qt::Key key = keys[Pick(int(std::size(keys)))];
            Note(QKeySequence(key).toString());
            QTest::keyClick(surface, key);
        }
    }

    // Saves the active map under a new name and reads it back.
    void SaveAndReadBack()
    {
        ShapeCanvas* map = m_frame->ActiveMapWindow();
        if (map == nullptr || map->Document().PolygonInProgress)
            return;
        const QString path = m_dir.filePath(QStringLiteral("save%1.imp").arg(++m_saves));
        m_ui->mapNamesToSave.enqueue(path);
        Trigger("menuSaveMapAs");
        const QByteArray saved = ReadBytes(path);
        const MapFile::ReadResult read = MapFile::OpenMapFile(path);
        QVERIFY2(read.ok, qPrintable(read.messages.join(QLatin1Char(' ')) + read.detail));
        QVERIFY2(MapInconsistency(read.document).isEmpty(),
                 qPrintable(MapInconsistency(read.document)));
        const MapDocument& shown = map->Document();
        QCOMPARE(read.document.ItemCount(), shown.ItemCount());
        for (std::size_t i = 0; i < shown.Shapes().size(); ++i) {
            QCOMPARE(read.document.Shapes()[i].Points(), shown.Shapes()[i].Points());
            QCOMPARE(read.document.Shapes()[i].URL, shown.Shapes()[i].URL);
        }
        // An order read back comes back as its inverse; read twice it is itself again.
        const MapFile::ReadResult twice =
            MapFile::ReadMap(MapFile::MapBytes(read.document, path), path);
        QCOMPARE(MapFile::MapBytes(twice.document, path), saved);
    }

    void CheckMaps(int step)
    {
        if (QTest::currentTestFailed())
            return; // said once
        for (ShapeCanvas* map : m_frame->MapWindows()) {
            const QString fault = MapInconsistency(map->Document());
            QVERIFY2(fault.isEmpty(),
                     qPrintable(QStringLiteral("step %1: %2 after %3")
                                    .arg(step)
                                    .arg(fault, m_trail.join(QLatin1String(", ")))));
        }
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        // A wide picture and a tall one.
        SavePicture(m_dir.filePath("pic0.png"), {420, 300});
        SavePicture(m_dir.filePath("pic1.png"), {200, 640}, Qt::lightGray);
    }

    void randomUserEvents()
    {
        const auto setting = [](const char* name, int otherwise) {
            return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : otherwise;
        };
        const quint32 seed = quint32(setting("VANTREL_MONKEY_SEED", 20261123));
        const int events = setting("VANTREL_MONKEY_EVENTS", 5000);
        const qint64 seconds = setting("VANTREL_MONKEY_SECONDS", 240);
        qInfo("seed %u, up to %d events in %lld s", seed, events, seconds);
        m_random.seed(seed);

        OpenFrame({900, 700});
        m_run->script = [this](QDialog& dialog) { AnswerDialog(dialog); };
        NewMap();

        QElapsedTimer timer;
        timer.start();
        int step = 0;
        for (; step < events && timer.elapsed() < seconds * 1000; ++step) {
            // Questions (close a map? discard?) get a random answer.
            m_ui->answers.enqueue(Pick(2) == 0);
            ShapeCanvas* map = m_frame->ActiveMapWindow();
            QWidget* surface = map == nullptr ? nullptr : &map->Surface();
            const int action = Pick(100);
            if (surface == nullptr || m_frame->MapWindows().isEmpty()) {
                NewMap();
            } else if (action < 45) {
                MouseEvent(surface, step);
            } else if (action < 70) {
                KeyEvent(surface);
            } else if (action < 94) {
                Trigger(Commands[Pick(int(std::size(Commands)))]);
            } else if (action < 97) {
                SaveAndReadBack();
            } else if (m_frame->MapWindows().size() > 2) {
                m_ui->answers.clear();
                m_ui->answers.enqueue(true);
                m_frame->ActiveMapWindow()->parentWidget()->close();
            } else if (m_saves > 0) {
                m_ui->mapsToOpen.enqueue(m_dir.filePath(QStringLiteral("save%1.imp").arg(m_saves)));
                Trigger("LoadPic");
            }
            m_ui->answers.clear();
            CheckMaps(step);
            if (QTest::currentTestFailed())
                return;
        }
        qInfo("%d events, %d saves, %d dialogs, %lld messages in %lld ms", step, m_saves,
              int(m_run->dialogs.size()), qlonglong(m_ui->messages.size()), timer.elapsed());
        // The run really did things.
        QVERIFY(step >= std::min(events, 500));
        QVERIFY(m_saves > 0 || step < 200);
        QVERIFY(!m_run->dialogs.isEmpty() || step < 200);
    }

    void cleanupTestCase() { CloseFrame(); }
};

QTEST_MAIN(TestMonkey)
#include "tst_monkey.moc"
