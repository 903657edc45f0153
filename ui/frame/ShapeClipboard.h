#pragma once

#include "core/shape/PatShape.h"

#include <QString>
#include <memory>

class ModalUi;
class ShapeCanvas;

// The frame's shape clipboard: a private copy of the last copied or cut shape, which
// can be pasted any number of times into any open map. It outlives the maps.
class ShapeClipboard
{
public:
    static inline const QString NothingCopiedMessage =
        QStringLiteral("No shape has been copied yet.");

    // Set once a shape has been copied in.
    bool SomethingInHoldShape = false;

    // Copies Map's top shape; a map without shapes leaves the clipboard as it was.
    void Copy(ShapeCanvas& Map);
    // Copy, then the map deletes its top shape.
    void Cut(ShapeCanvas& Map);
    // Adds a copy of the held shape to Map; before any copy the user is told instead.
    void Paste(ShapeCanvas& Map, ModalUi& Ui);

    // Null until the first copy.
    const PatShape* HoldShape() const { return m_holdShape.get(); }

private:
    std::unique_ptr<PatShape> m_holdShape;
};
