#include "ui/tools/MapTestCommand.h"

#include "core/base/Module1.h"
#include "core/interchange/MapTest.h"
#include "ui/canvas/ShapeCanvas.h"

void MapTestCommand::Run(ShapeCanvas& Map, ModalUi& Ui)
{
    // An empty map has already said "No shape areas have been created." and gives "".
    MapTest::Run(Map.GenerateMapCode(false), Ui, Module1::WritableProgramFolder());
}
