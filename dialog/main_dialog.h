// main_dialog: where people tune the effect. Start runs it; the answer is the host's result word.

#pragma once

struct SessionRecord;

// Shows the dialog modally, owned by the host's window (null: no owner). True when it ended with
// OK. When it cannot be shown the result word becomes kUserCanceled: nothing was agreed to.
bool showMainDialog(SessionRecord* session, void* ownerWindow);
