#pragma once

#include <QString>

// What is known about one link: how it was judged and the text a user reads.
struct LinkStatus
{
    enum class State {
        Unchecked,    // not asked for yet
        Checking,     // waiting for its answer
        Ok,           // a 2xx answer, or a file that is there
        Moved,        // reached through redirects; Detail holds the final address
        Broken,       // a 4xx answer
        ServerError,  // a 5xx answer (or any other code a browser would not show)
        Unreachable,  // no answer: host not found, refused, reset...
        TimedOut,     // no complete answer within the time allowed
        RedirectLoop, // redirects that never end
        FileMissing,  // a local file that is not there
        NotChecked,   // a scheme nobody can check from here (mailto, tel...)
        Malformed,    // an address that cannot be used at all
        NoAddress,    // nothing typed (keep last: tables are sized by it)
    };

    State state = State::Unchecked;
    int code = 0;   // the HTTP status code when there was one
    QString detail; // final address, error cause or scheme, depending on State

    // "OK 200", "Moved → https://...", "Broken 404", "Timed out", ...
    QString Text() const;
    // A link a visitor could not follow.
    bool IsBroken() const;
    // A short machine word for the state ("ok", "broken", ...), for JSON.
    QString Word() const;
};
