#include "ui/tools/MapImport.h"

#include "core/base/ModalUi.h"
#include "core/interchange/HtmlImporter.h"
#include "ui/canvas/ShapeCanvas.h"

bool MapImport::Generate(const QString& Text, ShapeCanvas& Map, ModalUi& Ui)
{
    const HtmlImporter::Result result = HtmlImporter::Convert(Text, Map.Document());
    if (!result.ok) {
        Ui.DetailedMessage(result.message, ModalUi::Icon::Critical, result.detail);
        return false;
    }
    Map.SetZoomLevel(Map.Document().ZoomLevel);
    HtmlImporter::Apply(result, Map.Document());
    Map.DrawShapes();
    return true;
}
