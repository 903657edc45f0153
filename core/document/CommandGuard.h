#pragma once

#include "core/base/ModalUi.h"
#include "core/base/Numeric.h"

#include <utility>

// The boundary of a user's command or event: an overflow, a bad index or a division
// by zero ends the command with a critical message instead of the program.
class CommandGuard
{
public:
    // Runs Command; when it fails, runs BeforeMessage (to let go of the pointer, say),
    // tells the user and returns false.
    template <class Command, class Cleanup>
    static bool Run(ModalUi& Dialogs, Command&& command, Cleanup&& BeforeMessage)
    {
        QString failure;
        try {
            std::forward<Command>(command)();
            return true;
        } catch (const OverflowError& e) {
            failure = QString::fromLatin1(e.what());
        } catch (const IndexOutOfRangeError& e) {
            failure = QString::fromLatin1(e.what());
        } catch (const DivisionByZeroError& e) {
            failure = QString::fromLatin1(e.what());
        }
        std::forward<Cleanup>(BeforeMessage)();
        Dialogs.Message(failure, ModalUi::Icon::Critical);
        return false;
    }
};
