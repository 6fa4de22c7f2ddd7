// desktop_session_fixture: a session with pictures and buffers on the Qt back end.

#pragma once

#include <QFile>
#include <QString>
#include <memory>

#include "entry/handles.h"
#include "entry/session_record.h"
#include "geometry/render_buffers.h"
#include "persistence/settings_codec.h"
#include "pictures/run_pictures.h"
#include "settings/settings_defaults.h"

class DesktopSession {
 public:
  DesktopSession() : session_(std::make_unique<SessionRecord>()) {
    fillDefaultSettings(&settings_);
    filter_.parameters = &master_;
    filter_.planes = 3;
    filter_.filterRect = {0, 0, 8, 8};
    session_->result = &result_;
    session_->filter = &filter_;
    session_->settings = &settings_;
    setGeometry(session_.get(), filter_.filterRect, 1);
    allocateBuffers(session_.get());
    createBuiltInTexture(session_.get());
    createBuiltInEnvironment(session_.get());
    settings_.environmentPath[0] = 0;
  }
  ~DesktopSession() {
    freeBuffers(session_.get());
  }
  DesktopSession(const DesktopSession&) = delete;
  DesktopSession& operator=(const DesktopSession&) = delete;

  // A preset with these settings that names an environment picture in the Windows character set.
  void writePreset(const QString& path, const char* environmentName) {
    uint8_t bytes[kLongestEncodedSettings + 300];
    const size_t empty = encodeSettings(&settings_, bytes);
    QByteArray content(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(empty));
    // The two empty names at the end give way to the one wanted.
    content.chop(10);
    const QByteArray name(environmentName);
    content += QByteArray(3, 0) + static_cast<char>(name.size()) + name + '\0' + QByteArray(5, 0);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    presetPath_ = path.toUtf8();
  }

  const char* presetPath() const {
    return presetPath_.constData();
  }
  SessionRecord* session() {
    return session_.get();
  }
  EffectSettings* settings() {
    return &settings_;
  }

 private:
  std::unique_ptr<SessionRecord> session_;
  EffectSettings settings_ = {};
  FilterRecord filter_ = {};
  void* master_ = &settings_;
  int16_t result_ = 0;
  QByteArray presetPath_;
};
