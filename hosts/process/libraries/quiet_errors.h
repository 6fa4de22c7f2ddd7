// quiet_errors: the picture libraries write their own complaints to standard error, past all that
// they offer for catching them. A run says one line of its own instead.

#pragma once

class QuietErrors {
 public:
  QuietErrors();
  ~QuietErrors();
  QuietErrors(const QuietErrors&) = delete;
  QuietErrors& operator=(const QuietErrors&) = delete;

 private:
  int kept;
};

// Standard error as it is while nothing is quiet, for what has to be heard all the same: first
// asked for before that. -1: there is none.
int loudErrors();
