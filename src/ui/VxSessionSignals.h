#pragma once
// A desktop session ends its programs with SIGTERM at logout, and a closed
// terminal sends SIGHUP. Both reach the event loop as a plain call, so that
// the program can keep the user's work and settings before it goes.

#include <functional>

class QObject;

// onEnd runs on the main thread when one of them has come, while context
// lives; after that they end the process again as they would by default.
// Catches SIGTERM and SIGHUP from the first moment of the process; what
// they ask for waits until VX_CallOnSessionEndSignals gives it a receiver.
void VX_PrepareSessionEndSignals();
void VX_CallOnSessionEndSignals(QObject* context, std::function<void()> onEnd);
