// interrupt: Ctrl-C and its relatives only raise a flag, so that the run can stop between two rows
// and leave nothing half done.

#pragma once

void watchForInterrupts();
bool interrupted();

// Ends the command when the flag is up.
void stopIfInterrupted();
