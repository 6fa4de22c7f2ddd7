#include "tests/support/hosts/session_fixture.h"

#include "geometry/render_buffers.h"
#include "platform/none/none_script.h"
#include "settings/settings_defaults.h"

SessionFixture::SessionFixture() : session(std::make_unique<SessionRecord>()) {
  resetNone();
  fillDefaultSettings(&settings);
  master = &settings;
  filter.parameters = &master;
  session->result = &result;
  session->filter = &filter;
  session->settings = &settings;
  session->render.buildHeightField = 1;
}

SessionFixture::~SessionFixture() {
  freeBuffers(session.get());
}

void SessionFixture::allocate(int16_t width, int16_t height) {
  filter.planes = 3;
  filter.filterRect = {0, 0, height, width};
  filter.inRect = filter.outRect = filter.filterRect;
  filter.inHiPlane = filter.outHiPlane = 2;
  freeBuffers(session.get());
  setGeometry(session.get(), filter.filterRect, 1);
  allocateBuffers(session.get());
}
