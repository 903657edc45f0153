#pragma once

// The embedded browser of the URL checker runs on Chromium, which will not start its
// sandbox for root and then ends the whole program, unsaved maps and all.
class BrowserSandbox
{
public:
    // For root, the browser runs without the sandbox, as Chromium asks; a choice already
    // made in the environment stays. Must run before the first page is shown.
    static void Prepare(bool RunAsRoot);
};
