// Hundreds of damaged files of every format: each is refused in one line, or is a picture that
// another reader calls whole, too; nothing takes much time or memory.

#include <sys/resource.h>
#include <sys/wait.h>

#include <QDir>
#include <QElapsedTimer>
#include <QImageReader>
#include <QRegularExpression>
#include <QtEndian>

#include "tests/command_line/program_run.h"

#ifdef MORVALIS_SANITIZED
constexpr bool kCountsMemory = false;  // the sanitizer takes its own
#else
constexpr bool kCountsMemory = true;
#endif

class Damage : public ProgramTest {
 protected:
  Damage() {
    QDir(path("")).mkdir("in");
    QDir(path("")).mkdir("out");
  }

  // The largest memory of a process that has been run, in megabytes.
  static long largestRun() {
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    return usage.ru_maxrss / 1024;
  }

  static QByteArray number(quint32 value) {
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
  }

  // Small files of every kind that is read.
  QMap<QString, QByteArray> sources() const {
    save(colorPicture(true), "alpha.png");
    save(colorPicture(), "color.png");
    save(greyPicture(), "grey.png");
    QMap<QString, QByteArray> files;
    const auto take = [&](const QString& kind, const QString& name) { files[kind] = read(name); };
    const QStringList outputs = {"a.tif", "a.webp", "a.avif", "a.jxl", "a.bmp", "a.ppm", "a.jpg"};
    for (const QString& output : outputs) {
      EXPECT_EQ(run({"apply", "color.png", "-o", output, "--quiet"}).exitCode, 0);
      take(output.mid(2) + "." + output.mid(2), output);
    }
    EXPECT_EQ(run({"apply", "color.png", "-o", "d.tif", "--quiet", "--depth", "16"}).exitCode, 0);
    take("deep.tif", "d.tif");
    EXPECT_EQ(run({"apply", "grey.png", "-o", "g.pgm", "--quiet"}).exitCode, 0);
    take("g.pgm", "g.pgm");
    take("color.png", "color.png");
    take("alpha.png", "alpha.png");
    save(greyPicture().convertToFormat(QImage::Format_Indexed8), "indexed.png");
    take("indexed.png", "indexed.png");
    save(colorPicture(true), "i.ico");
    take("icon.ico", "i.ico");
    files["gif.gif"] = QByteArray::fromHex(
        "47494638396104000400910000ff000000ff000000ffffffff2c00000000040004000002"
        "08448c0e1089c6945b05003b");
    files["packed.tga"] = QByteArray::fromHex(
                              "00000a00000000000000000004000400180083"
                              "0a141e83281e0a830a141e83281e0a") +
                          QByteArray(26, '\0');
    return files;
  }

  // Cut at ten places, changed at ten places, and with absurd numbers in ten places of the header.
  static QList<QByteArray> damaged(const QByteArray& file) {
    QList<QByteArray> files;
    quint32 state = static_cast<quint32>(file.size());
    const auto random = [&state](qsizetype most) {
      state = state * 1664525U + 1013904223U;
      return static_cast<qsizetype>(state >> 8) % most;
    };
    for (int tenth = 0; tenth < 10; ++tenth) {
      files += file.left(std::max<qsizetype>(1, file.size() * tenth / 10));
    }
    for (int i = 0; i < 10; ++i) {
      QByteArray changed = file;
      const qsizetype at = random(file.size());
      changed[at] = static_cast<char>(changed[at] ^ (1 << random(8)));
      files += changed;
    }
    for (int i = 0; i < 10; ++i) {
      QByteArray absurd = file;
      const qsizetype at = 4 + random(std::min<qsizetype>(60, file.size() - 8));
      absurd.replace(at, 4, i % 2 == 0 ? "\xff\xff\xff\x7f" : "\x7f\xff\xff\xff");
      files += absurd;
    }
    return files;
  }
};

// Some readers take what is behind a cut for grey; those of the picture library do not, and they
// read the formats that the other ones lack.
TEST_F(Damage, IsToldOrIsNone) {
  QStringList names;
  const QMap<QString, QByteArray> whole = sources();
  for (auto source = whole.begin(); source != whole.end(); ++source) {
    int count = 0;
    for (const QByteArray& file : damaged(source.value())) {
      const QString kind = source.key().section('.', 0, 0);
      names += QString("in/%1-%2.%3").arg(kind).arg(count++).arg(source.key().section('.', 1));
      write(names.back(), file);
    }
  }
  ASSERT_GE(names.size(), 400);
  const RunResult result = run(
      QStringList{"apply", "-o", "out/{name}.png", "-j", "2", "--quiet", "--seed", "7"} + names);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_FALSE(result.errors.contains("signal")) << result.errors.toStdString();
  if (kCountsMemory) {
    EXPECT_LT(largestRun(), 1000);
  }

  const QStringList lines = result.errors.split('\n', Qt::SkipEmptyParts);
  int refused = 0;
  for (const QString& name : names) {
    const QStringList about = lines.filter(QRegularExpression("^morvalis: " + name + ": [a-z]"));
    const QString output = "out/" + QFileInfo(name).completeBaseName() + ".png";
    ASSERT_EQ(about.size(), QFile::exists(path(output)) ? 0 : 1) << name.toStdString();
    if (!about.isEmpty()) {
      ++refused;
      continue;
    }
    const QSize size = QImageReader(path(output)).size();
    QImageReader other(path(name));
    other.setDecideFormatFromContent(true);
    const QImage seen = other.read();
    const bool known =
        !seen.isNull() || runShell("vips avg " + name + "[fail_on=error]").exitCode == 0;
    EXPECT_TRUE(known) << name.toStdString() << ": read, but by nobody else";
    if (!seen.isNull()) {
      EXPECT_EQ(seen.size(), size) << name.toStdString();
    }
  }
  EXPECT_EQ(lines.size(), refused + 1);  // and how many have failed
  EXPECT_GT(refused, names.size() / 2);
  EXPECT_EQ(QDir(path("out")).entryList({".*"}, QDir::Files | QDir::Hidden).join(" "), "");
}

// Little files that stand for a lot.
TEST_F(Damage, BombsAreQuick) {
  const QByteArray zeros(qsizetype{64} << 20, '\0');
  const QByteArray packed = qCompress(zeros, 9).mid(4);
  const QByteArray rows(8 * 24, '\x60');
  const auto chunk = [&](const char* name, const QByteArray& key) {
    return pngChunk(name, key + QByteArray("\0\0", 2) + packed);
  };
  write("profile.png", pngFile(8, 8, 2, rows, chunk("iCCP", "large")));
  QByteArray texts;
  for (int i = 0; i < 20; ++i) texts += chunk("zTXt", "Title");
  write("texts.png", pngFile(8, 8, 2, rows, texts));
  QByteArray large = pngFile(1, 1, 0, "a");
  const QByteArray sides = number(32000) + number(32000) + QByteArray("\x08\0\0\0\0", 5);
  large.replace(8, 25, pngChunk("IHDR", sides));
  write("sides.png", large);

  // Entries that all name one array: tag, type 7 (anything), count, place.
  const auto little = [](quint32 value, int bytes) {
    QByteArray text(4, '\0');
    qToLittleEndian(value, text.data());
    return text.left(bytes);
  };
  for (const int entries : {1000, 65535}) {
    const quint32 array = 10 + static_cast<quint32>(entries) * 12 + 4;
    QByteArray directory;
    const quint32 usual[][2] = {{256, 8},     {257, 8}, {258, 8}, {259, 1}, {262, 1},
                                {273, array}, {277, 1}, {278, 8}, {279, 64}};
    for (const auto& [tag, value] : usual) {
      directory += little(tag, 2) + little(4, 2) + little(1, 4) + little(value, 4);
    }
    for (int i = 9; i < entries; ++i) {
      directory += little(static_cast<quint32>(std::min(700 + i, 65535)), 2) + little(7, 2) +
                   little(120000, 4) + little(array, 4);
    }
    write(QString("entries%1.tif").arg(entries),
          "II*" + QByteArray(1, '\0') + little(8, 4) + little(static_cast<quint32>(entries), 2) +
              directory + QByteArray(4, '\0') + QByteArray(120000, '\0'));
  }
  const struct {
    const char* name;
    int exitCode;
    const char* says;
  } bombs[] = {
      {"profile.png", 0, "its colour profile, which is damaged or larger than 16 MB, is left out"},
      {"texts.png", 0, ""},
      {"sides.png", 1, "sides.png: is "},
      {"entries1000.tif", 1, "its directory names more than the file holds"},
      {"entries65535.tif", 1, "its directory names more than the file holds"},
  };
  for (const auto& bomb : bombs) {
    QElapsedTimer timer;
    timer.start();
    const RunResult result = run({"apply", bomb.name, "-o", "out.png", "--seed", "7"});
    EXPECT_EQ(result.exitCode, bomb.exitCode) << result.errors.toStdString();
    EXPECT_TRUE(result.errors.contains(bomb.says)) << result.errors.toStdString();
    EXPECT_LT(timer.elapsed(), 20000) << bomb.name;
  }
  if (kCountsMemory) {
    EXPECT_LT(largestRun(), 200);
  }
}
