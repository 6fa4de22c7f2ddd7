// color_services: the host's colour picker and its small questions about colours.

#pragma once

#include "entry/host_interface.h"

// Null when the switches withhold it. Knows RGB and grey. The picker answers at once with the
// colour it was opened with, like a user who accepts it.
ColorServicesProc offerColorServices();
