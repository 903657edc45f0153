#include "ui/tools/ImportWithOptions.h"

#include "core/base/ModalUi.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/HtmlMapReader.h"
#include "core/interchange/LosslessImporter.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/tools/MapImport.h"

bool ImportWithOptions::Generate(const QString& Text, ShapeCanvas& Map, ModalUi& Ui, bool KeepText,
                                 bool Add)
{
    if (!KeepText && !Add)
        return MapImport::Generate(Text, Map, Ui);

    MapDocument& document = Map.Document();
    LosslessImporter::Result result;
    if (KeepText) {
        QString refusal;
        const std::vector<HtmlMapReader::Map> maps = HtmlMapReader::ReadMaps(Text, refusal);
        if (!refusal.isEmpty()) {
            Ui.Message(refusal, ModalUi::Icon::Critical);
            return false;
        }
        std::size_t chosen = 0;
        if (maps.size() > 1) {
            QStringList items;
            for (const HtmlMapReader::Map& map : maps) {
                const QString name = map.name.isEmpty() ? QStringLiteral("(no name)") : map.name;
                items << QStringLiteral("%1 (%2 areas)").arg(name).arg(map.areas.size());
            }
            const std::optional<int> choice =
                Ui.Choose(ChooseMapPrompt(), QStringLiteral("Convert HTML to Map"), items);
            if (!choice)
                return false;
            chosen = static_cast<std::size_t>(*choice);
        }
        result = LosslessImporter::Convert(maps, chosen, document);
    } else {
        result =
            LosslessImporter::FromClassic(HtmlImporter::Convert(Text, document), document.MapName);
    }
    if (!result.ok) {
        Ui.DetailedMessage(result.message, ModalUi::Icon::Critical, result.detail);
        return false;
    }
    if (Add) {
        const QString limit = LosslessImporter::AddLimitMessage(result, document);
        if (!limit.isEmpty()) {
            Ui.Message(limit, ModalUi::Icon::Critical);
            return false;
        }
    }
    Map.SetZoomLevel(document.ZoomLevel);
    LosslessImporter::Apply(result, document, Add);
    Map.DrawShapes();
    return true;
}
