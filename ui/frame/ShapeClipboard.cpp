#include "ui/frame/ShapeClipboard.h"

#include "core/base/ModalUi.h"
#include "ui/canvas/ShapeCanvas.h"

void ShapeClipboard::Copy(ShapeCanvas& Map)
{
    if (!m_holdShape)
        m_holdShape = std::make_unique<PatShape>();
    // Copy into a scratch shape so a failed copy never spoils what is held.
    PatShape copy;
    if (Map.SetShapeEqualToTopShape(copy)) {
        *m_holdShape = copy;
        SomethingInHoldShape = true;
    }
}

void ShapeClipboard::Cut(ShapeCanvas& Map)
{
    Copy(Map);
    Map.DeleteShape(QStringLiteral("Cut Shape"));
}

void ShapeClipboard::Paste(ShapeCanvas& Map, ModalUi& Ui)
{
    if (!SomethingInHoldShape) {
        Ui.Message(NothingCopiedMessage, ModalUi::Icon::Information);
        return;
    }
    if (!m_holdShape)
        m_holdShape = std::make_unique<PatShape>();
    Map.SetNewShape(*m_holdShape);
}
