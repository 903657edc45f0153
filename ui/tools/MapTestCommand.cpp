#include "ui/tools/MapTestCommand.h"

#include "core/base/Module1.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/MapFormatSetting.h"
#include "core/interchange/MapTest.h"
#include "ui/canvas/ShapeCanvas.h"

void MapTestCommand::Run(ShapeCanvas& Map, ModalUi& Ui)
{
    const MapFormat format = MapFormatSetting::Load();
    if (format == MapFormat::Classic || Map.Document().ItemCount() < 0) {
        // An empty map has already said "No shape areas have been created." and gives "".
        MapTest::Run(Map.GenerateMapCode(false), Ui, Module1::WritableProgramFolder());
        return;
    }
    const FormattedMapCode code =
        FormattedMapCode::Generate(Map.Document(), format, MapCodeGenerator::Form::Test);
    MapTest::RunPage(code.TestPageText(format), Ui, Module1::WritableProgramFolder());
}
