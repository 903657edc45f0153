#pragma once

class QLineEdit;

// The number boxes of the dialogs take the digits 0 to 9 and nothing else.
class DigitsOnly
{
public:
    static void Apply(QLineEdit& Box);
};
