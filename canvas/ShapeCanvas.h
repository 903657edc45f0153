#pragma once

#include "canvas/MapDocument.h"

#include <QImage>
#include <QString>
#include <QWidget>
#include <cstdint>

class CanvasHost;
class QLabel;
class QPushButton;
class QScrollBar;

// One open map window: the picture at its zoom in a scrolled viewport, the optional
// grid, and the mouse and keyboard editing of the map's shapes.
//
// Public API used by the frame and the dialogs. Child widgets carry the object names
// HoldPicbox, TheCanvas, HoldImage, HScroll1, VScroll1 and BntScrollEnd.
class ShapeCanvas : public QWidget {
    Q_OBJECT
public:
    // Loads the window: counts it in OpenMapCount (enabling the frame's map commands
    // on the first) and sets the defaults of a new map.
    explicit ShapeCanvas(CanvasHost& Host, QWidget* parent = nullptr);
    ~ShapeCanvas() override;

    MapDocument& Document();
    const MapDocument& Document() const;

    // ---- picture, zoom, grid -------------------------------------------------------
    // A new map's picture: RealWidth/SWidth = the picture's width (and heights),
    // zoom 1.0, ImageName and ImagePath from PicturePath.
    void SetNewPicture(const QImage& Picture, const QString& PicturePath);
    void SetPicSize(bool* hBarShown = nullptr, bool* vBarShown = nullptr);
    void SetZoomLevel(double NewZoomLevel);
    void DrawGrid(bool ShouldSetPic = true);
    void DrawGridLines();

    // ---- files and code ------------------------------------------------------------
    // Loads a map file into this (fresh) window; messages go to the user. False on
    // failure, with the document untouched.
    bool OpenMapFile(const QString& FileNameToOpen);
    void SaveMap();
    void SaveMapAs();
    QString FileName() const;
    // Viewing form (loadwindow true) goes to the code window and returns "";
    // the test form is returned.
    QString GenerateMapCode(bool loadwindow);
    void CheckTheURLs();

    // ---- shape commands (errors become a critical message; the map stays whole) ----
    void DeleteShape();
    // Copies the top shape into CopyOfShape; false when the map has no shapes.
    bool SetShapeEqualToTopShape(PatShape& CopyOfShape);
    void SetNewShape(const PatShape& NewShape);
    void MorphShape(std::int16_t SType);
    void ShapeProperties(std::int16_t TheIndex);
    void DrawShapes();
    void ReStackArrayFromOptions(std::int16_t NewTopIndex);
    void SetShapeColors();
};
