#include "interchange/MapTestCommand.h"

#include "canvas/ShapeCanvas.h"
#include "frame/Module1.h"
#include "interchange/MapTest.h"

void MapTestCommand::Run(ShapeCanvas& Map, ModalUi& Ui)
{
    // An empty map has already said "No shape areas have been created." and gives "".
    MapTest::Run(Map.GenerateMapCode(false), Ui, Module1::WritableProgramFolder());
}
