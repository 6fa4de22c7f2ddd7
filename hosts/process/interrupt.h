// interrupt: Ctrl-C and its relatives only raise a flag, so that the run can stop between two rows
// and leave nothing half done.

#pragma once

void watchForInterrupts();
bool interrupted();

// Stops the work in progress without a signal: the user has thought better of it. Taken back once
// it has stopped.
void askToStop();
void forgetStop();

// The exit code of a run that has been interrupted: 130 by Ctrl-C, 143 by SIGTERM, 129 by SIGHUP.
int interruptedExitCode();

// Ends the command when the flag is up; without a word when the user has asked for it.
void stopIfInterrupted();
