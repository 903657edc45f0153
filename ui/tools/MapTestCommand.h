#pragma once

class ModalUi;
class ShapeCanvas;

// "Test Image Map" on a map window: its test code in the test page next to the
// program, opened in the desktop's browser. The classic page unless the code window's
// format is another one.
class MapTestCommand
{
public:
    static void Run(ShapeCanvas& Map, ModalUi& Ui);
};
