#pragma once

#include "FakeCanvasHost.h"
#include "core/document/OpenMapCount.h"
#include "ui/canvas/CanvasSurface.h"
#include "ui/canvas/ShapeCanvas.h"

#include <QTest>
#include <memory>

// A map window over a frame stand-in, made afresh for each case, and the gestures the
// map-window tests share.
class CanvasFixture
{
protected:
    using Mode = CanvasHost::DrawingMode;

    std::unique_ptr<FakeCanvasHost> m_host;
    std::unique_ptr<ShapeCanvas> m_canvas;

    static QImage WhitePicture(int width, int height)
    {
        QImage picture(width, height, QImage::Format_RGB32);
        picture.fill(Qt::white);
        return picture;
    }
    // The active window, 640 x 480 on screen, over a white picture.
    ShapeCanvas& NewCanvas(int pictureWidth = 400, int pictureHeight = 300)
    {
        m_canvas.reset();
        m_host = std::make_unique<FakeCanvasHost>();
        m_canvas = std::make_unique<ShapeCanvas>(*m_host);
        m_host->active = m_canvas.get();
        m_canvas->resize(640, 480);
        m_canvas->show();
        m_canvas->SetNewPicture(WhitePicture(pictureWidth, pictureHeight),
                                QStringLiteral("/maps/pic.png"));
        return *m_canvas;
    }
    // For cleanup(): no case may leave a map counted as open.
    void CloseCanvas()
    {
        m_canvas.reset();
        m_host.reset();
        QCOMPARE(OpenMapCount, std::int16_t(0));
    }
    CanvasSurface* Surface() { return &m_canvas->Surface(); }
    MapDocument& Doc() { return m_canvas->Document(); }
    void Drag(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(Surface(), button, {}, from);
        QTest::mouseMove(Surface(), to);
        QTest::mouseRelease(Surface(), button, {}, to);
    }
    void Click(QPoint at, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseClick(Surface(), Qt::LeftButton, keys, at);
    }
    void Draw(Mode mode, QPoint from, QPoint to)
    {
        m_host->mode = mode;
        Drag(from, to);
        m_host->mode = Mode::Pointer;
    }
    void Consistent()
    {
        QVERIFY2(MapInconsistency(Doc()).isEmpty(), qPrintable(MapInconsistency(Doc())));
    }
};
