// interrupt: Ctrl-C and its relatives raise a flag, so that the run can stop between two rows and
// leave nothing half done. Where it does not come to look in time, inside a library, it is ended
// there and then.

#pragma once

void watchForInterrupts();
bool interrupted();

// The same without a signal: the user has thought better of the work in progress. Taken back once
// that has stopped.
void askToStop();
void forgetStop();

// The run has seen the flag and ends by itself.
void takeTimeToEnd();

// While watched, a library that uses no processor for half a minute ends the run with a line:
// where memory fails some keep a lock, or wait for threads that could not start.
void watchForStandstill(bool watched);

// While it stands nothing is watched: another program or the user is waited for.
class UnwatchedWait {
 public:
  UnwatchedWait();
  ~UnwatchedWait();
  UnwatchedWait(const UnwatchedWait&) = delete;
  UnwatchedWait& operator=(const UnwatchedWait&) = delete;

 private:
  bool before;
};

// In a process whose parent says that it was interrupted.
void stayQuietAboutInterrupts();

// The exit code of a run that has been interrupted: 130 by Ctrl-C, 143 by SIGTERM, 129 by SIGHUP.
int interruptedExitCode();

// Ends the command when the flag is up; without a word when the user has asked for it.
void stopIfInterrupted();
