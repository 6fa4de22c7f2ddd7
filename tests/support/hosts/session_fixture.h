// session_fixture: a session with settings, a filter record and, on request, buffers, without a
// host: for tests of single procedures.

#pragma once

#include <memory>

#include "entry/session_record.h"

struct SessionFixture {
  std::unique_ptr<SessionRecord> session;
  FilterRecord filter = {};
  EffectSettings settings = {};
  void* master = nullptr;
  int16_t result = 0;

  SessionFixture();
  ~SessionFixture();
  SessionFixture(const SessionFixture&) = delete;
  SessionFixture& operator=(const SessionFixture&) = delete;

  // Takes the geometry of a picture of this size and allocates the buffers.
  void allocate(int16_t width, int16_t height);
};
