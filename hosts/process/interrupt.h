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

// While it stands, a library that does not come back within so many seconds ends the run with this
// line, which stays where it is. Where memory fails some keep a lock, and then wait for themselves.
class TimeLimit {
 public:
  TimeLimit(unsigned seconds, const char* line);
  ~TimeLimit();
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;
};

// In a process whose parent says that it was interrupted.
void stayQuietAboutInterrupts();

// The exit code of a run that has been interrupted: 130 by Ctrl-C, 143 by SIGTERM, 129 by SIGHUP.
int interruptedExitCode();

// Ends the command when the flag is up; without a word when the user has asked for it.
void stopIfInterrupted();
