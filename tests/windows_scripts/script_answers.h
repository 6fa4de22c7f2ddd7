// script_answers: answers what the module opens above its dialog, and keeps count.

#pragma once

// Answers the one that is open; waits for it to come. Called in the thread that plays.
void answerNextDialog();

// Whether one is open, and can be seen.
bool isDialogToAnswer();
