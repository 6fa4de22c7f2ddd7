// What is not selected keeps every sample, in every format without loss and in both depths.

#include <QStandardPaths>

#include "tests/command_line/program_run.h"

class Outside : public ProgramTest {
 protected:
  void SetUp() override {
    if (QStandardPaths::findExecutable("vips").isEmpty()) GTEST_SKIP() << "vips is not installed";
  }

  // The largest difference of the left halves, by the judgement of vips.
  QString difference(const QString& a, const QString& b) const {
    return runShell("set -e; for i in '" + a + "' '" + b +
                    "'; do vips extract_area $i \"${i%%.*}-left.v\" 0 0 20 40; done; "
                    "vips subtract " +
                    a.section('.', 0, 0) + "-left.v " + b.section('.', 0, 0) +
                    "-left.v d.v; vips abs d.v e.v; vips max e.v")
        .output.trimmed();
  }
};

TEST_F(Outside, NoSampleDiffers) {
  // Noise of all values, cut into planes; the right half is selected.
  ASSERT_EQ(
      runShell("for i in 1 2 3 4; do vips gaussnoise n$i.v 40 40 --mean 32768 --sigma 16000 "
               "--seed $i; vips cast n$i.v u$i.v ushort; vips msb u$i.v b$i.v; done; "
               "vips black l.v 20 40; vips invert l.v r.v; vips join l.v r.v mask.png horizontal; "
               "for d in u b; do vips bandjoin \"${d}1.v ${d}2.v ${d}3.v\" ${d}c.v; "
               "vips bandjoin \"${d}1.v ${d}2.v ${d}3.v ${d}4.v\" ${d}a.v; "
               "vips bandjoin \"${d}1.v ${d}4.v\" ${d}h.v; done; "
               "for k in c a; do vips copy u$k.v $k-16.png --interpretation rgb16; "
               "vips copy b$k.v $k-8.png --interpretation srgb; done; "
               "vips copy u1.v g-16.png --interpretation grey16; "
               "vips copy b1.v g-8.png --interpretation b-w; "
               "vips copy uh.v h-16.png --interpretation grey16; "
               "vips copy bh.v h-8.png --interpretation b-w")
          .exitCode,
      0);
  const struct {
    const char* kind;  // colours, with alpha; grey, with alpha
    const char* depth;
    QStringList formats;
  } rows[] = {
      {"c", "8", {"png", "tif", "webp", "jxl", "ppm", "bmp"}},
      {"c", "16", {"png", "tif", "jxl", "ppm"}},
      {"a", "8", {"png", "tif", "jxl"}},
      {"a", "16", {"png", "tif", "jxl"}},
      {"g", "8", {"png", "tif", "jxl", "pgm"}},
      {"g", "16", {"png", "tif", "jxl", "pgm"}},
      {"h", "8", {"png", "tif"}},
      {"h", "16", {"png", "tif"}},
  };
  for (const auto& row : rows) {
    const QString source = QString("%1-%2.png").arg(row.kind, row.depth);
    for (const QString& format : row.formats) {
      SCOPED_TRACE((source + " to " + format).toStdString());
      // From there into that format, and from that format on, where it is read.
      const QString output = QString("o%1%2.%3").arg(row.kind, row.depth, format);
      const QStringList options = {"--mask", "mask.png", "--quiet", "--seed", "7"};
      ASSERT_EQ(run(QStringList{"apply", source, "-o", output} + options).exitCode, 0);
      if (format == "jxl") {
        ASSERT_EQ(runShell("vips copy " + output + " back.png").exitCode, 0);
      } else {
        ASSERT_EQ(run(QStringList{"apply", output, "-o", "back.png"} + options).exitCode, 0);
      }
      EXPECT_EQ(difference(source, "back.png"), "0.000000");
      const QString depth = runShell("vipsheader -f format back.png").output;
      EXPECT_TRUE(depth.contains(row.depth[0] == '8' ? "UCHAR" : "USHORT"));
      // And the other half is not what it was.
      EXPECT_NE(
          runShell("vips subtract " + source + " back.png d.v; vips abs d.v e.v; vips max e.v")
              .output.trimmed(),
          "0.000000");
    }
  }
}
