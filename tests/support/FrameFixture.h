#pragma once

#include "ScriptedModalUi.h"
#include "ShapeBuilders.h"
#include "core/document/OpenMapCount.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/frame/MDIForm1.h"

#include <QAction>
#include <QDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <memory>

template <typename T> T* Child(QObject& parent, const char* name)
{
    return parent.findChild<T*>(QString::fromLatin1(name));
}

inline void Click(QWidget& parent, const char* button)
{
    QTest::mouseClick(Child<QPushButton>(parent, button), Qt::LeftButton);
}

// A picture file to make a map of.
inline QString SavePicture(const QString& path, QSize size = {400, 300}, QColor fill = Qt::white)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(fill);
    picture.save(path);
    return path;
}

// Count small rectangles within 400 x 300 pixels, linked to url followed by their number.
inline void AdoptRectangles(MapDocument& doc, int count, const QString& url)
{
    std::vector<PatShape> shapes;
    std::vector<std::int16_t> order;
    for (int i = 0; i < count; ++i) {
        shapes.push_back(
            MakeShape(Rectangle, Corners(i % 380, i % 280, i % 380 + 20, i % 280 + 20)));
        shapes.back().URL = url + QString::number(i);
        order.push_back(static_cast<std::int16_t>(i));
    }
    doc.AdoptShapes(std::move(shapes), std::move(order));
}

// The main window with scripted messages and dialogs.
struct FrameRun
{
    ScriptedModalUi ui;
    MDIForm1 frame{ui};
    // What the next dialog does; cancelled unless a case says otherwise.
    std::function<void(QDialog&)> script = [](QDialog& dialog) { dialog.reject(); };
    QStringList dialogs; // the titles of the dialogs shown

    explicit FrameRun(QSize size = {})
    {
        frame.ExecDialog = [this](QDialog& dialog) {
            dialogs.append(dialog.windowTitle());
            script(dialog);
            return dialog.result();
        };
        if (size.isValid())
            frame.resize(size);
        frame.show();
    }
    ~FrameRun()
    {
        ui.answers.fill(true, 20);
        ui.saveChoices.fill(ModalUi::SaveChoice::Discard, 20);
        frame.close();
    }
    void Trigger(const char* name) { Child<QAction>(frame, name)->trigger(); }
    ShapeCanvas* NewMap(const QString& picture)
    {
        ui.pictures.enqueue(picture);
        Trigger("NewMap");
        return frame.ActiveMapWindow();
    }
    // A drag on the map in the mode given, by way of its midpoint.
    void Drag(ShapeCanvas& map, const char* mode, QPoint from, QPoint to)
    {
        Trigger(mode);
        QWidget* surface = Child<QWidget>(map, "TheCanvas");
        QTest::mousePress(surface, Qt::LeftButton, {}, from);
        QTest::mouseMove(surface, (from + to) / 2);
        QTest::mouseMove(surface, to);
        QTest::mouseRelease(surface, Qt::LeftButton, {}, to);
    }
};

// A fresh frame for each case: call OpenFrame() in init() and CloseFrame() in cleanup().
class FrameFixture
{
protected:
    QTemporaryDir m_dir;
    std::unique_ptr<FrameRun> m_run;
    MDIForm1* m_frame = nullptr;
    ScriptedModalUi* m_ui = nullptr;

    void OpenFrame(QSize size = {})
    {
        m_run = std::make_unique<FrameRun>(size);
        m_frame = &m_run->frame;
        m_ui = &m_run->ui;
        QVERIFY(QTest::qWaitForWindowExposed(m_frame));
    }
    // No case may leave a map counted as open.
    void CloseFrame()
    {
        m_run.reset();
        QCOMPARE(OpenMapCount, std::int16_t(0));
    }
    void Trigger(const char* name) const { m_run->Trigger(name); }
    ShapeCanvas* NewMap(int width = 400, int height = 300)
    {
        return m_run->NewMap(SavePicture(m_dir.filePath("pic.png"), {width, height}));
    }
    void Drag(ShapeCanvas& map, const char* mode, QPoint from, QPoint to)
    {
        m_run->Drag(map, mode, from, to);
    }
};
