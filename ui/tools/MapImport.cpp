#include "ui/tools/MapImport.h"

#include "core/base/ModalUi.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/LosslessImporter.h"
#include "ui/canvas/ShapeCanvas.h"

bool MapImport::Generate(const QString& Text, ShapeCanvas& Map, ModalUi& Ui)
{
    const HtmlImporter::Result result = HtmlImporter::Convert(Text, Map.Document());
    if (!result.ok) {
        QString detail = result.detail;
        // Code a browser reads (single quotes, unquoted values) that the classic reading
        // refuses: the user is told of the option that takes it.
        if (LosslessImporter::Convert(Text, Map.Document()).ok)
            detail += (detail.isEmpty() ? QString() : QStringLiteral("\n\n")) + KeepTextHint();
        Ui.DetailedMessage(result.message, ModalUi::Icon::Critical, detail);
        return false;
    }
    Map.SetZoomLevel(Map.Document().ZoomLevel);
    HtmlImporter::Apply(result, Map.Document());
    Map.DrawShapes();
    return true;
}
