#include "ui/dialogs/WidePrompt.h"

#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>

namespace {

// Room for an ordinary address even when the prompt starts empty or short.
constexpr int NarrowestChars = 60;
// The line edit's frame and padding around the text, and the dialog's margins.
constexpr int FieldPadding = 24;
constexpr int DialogMargins = 60;

} // namespace

WidePrompt::WidePrompt(const QString& Label, const QString& Title, const QString& Text,
                       QWidget* parent)
    : QInputDialog(parent)
{
    setWindowTitle(Title);
    setLabelText(Label);
    setInputMode(QInputDialog::TextInput);
    setTextValue(Text);
    const QScreen* screen = parent ? parent->screen() : QGuiApplication::primaryScreen();
    const int widest =
        (screen ? screen->availableGeometry().width() * 9 / 10 : 1600) - DialogMargins;
    // One average character more than the text, so the caret at its end shows too.
    const int wanted =
        fontMetrics().horizontalAdvance(Text) + fontMetrics().averageCharWidth() + FieldPadding;
    // The dialog sizes itself to its layout, so the field is what must be wide.
    const int narrowest = fontMetrics().averageCharWidth() * NarrowestChars;
    if (auto* field = findChild<QLineEdit*>())
        field->setMinimumWidth(qBound(narrowest, wanted, qMax(narrowest, widest)));
}
