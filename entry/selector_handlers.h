// selector_handlers: the six stages of a use of the filter, in calling order. Each orders the work
// of the other folders and leaves failures in the host's result word.

#pragma once

#include "entry/host_interface.h"

struct SessionRecord;

void doAbout(AboutRecord* about);           // no session
void doParameters(SessionRecord* session);  // the next Start shows the dialog
void doPrepare(SessionRecord* session);     // tells the host what memory the render will take
void doStart(SessionRecord* session);       // dialog, set-up, first request
void doContinue(SessionRecord* session);    // the render, as far as rows are there
void doFinish(SessionRecord* session);      // scripting
