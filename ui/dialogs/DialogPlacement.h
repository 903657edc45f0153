#pragma once

class QWidget;

// Every dialog opens in the middle of the screen it is shown on.
class DialogPlacement
{
public:
    static void CentreOnScreen(QWidget& Dialog);
};
