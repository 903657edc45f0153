#include "ui/dialogs/DigitsOnly.h"

#include <QLineEdit>
#include <QRegularExpression>
#include <QRegularExpressionValidator>

void DigitsOnly::Apply(QLineEdit& Box)
{
    Box.setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), &Box));
}
