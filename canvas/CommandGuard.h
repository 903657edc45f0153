#pragma once

#include "frame/ModalUi.h"
#include "shape/Numeric.h"

#include <utility>

// The boundary of a user's command or event: an overflow, a bad index or a division
// by zero ends the command with a critical message instead of the program.
class CommandGuard
{
public:
    // Runs Command; false when it failed and the user was told.
    template <class Command> static bool Run(ModalUi& Dialogs, Command&& command)
    {
        try {
            std::forward<Command>(command)();
            return true;
        } catch (const OverflowError& e) {
            Dialogs.Message(QString::fromLatin1(e.what()), ModalUi::Icon::Critical);
        } catch (const IndexOutOfRangeError& e) {
            Dialogs.Message(QString::fromLatin1(e.what()), ModalUi::Icon::Critical);
        } catch (const DivisionByZeroError& e) {
            Dialogs.Message(QString::fromLatin1(e.what()), ModalUi::Icon::Critical);
        }
        return false;
    }
};
