#include "hosts/process/file_access.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <utility>

#include "hosts/process/command_failure.h"
#include "hosts/process/file_names.h"
#include "hosts/process/interrupt.h"
#include "hosts/process/leftovers.h"

constexpr size_t kLargestInput = size_t{1} << 32;
constexpr int kPollMilliseconds = 200;
constexpr size_t kFirstRoom = 64 * 1024;
constexpr size_t kPieceBytes = size_t{16} << 20;  // between two looks for an interruption
constexpr char kTooLarge[] = "is larger than 4 GB";

// --- Reading --------------------------------------------------------------------------------

struct Descriptor {
  explicit Descriptor(int opened) : number(opened) {
  }
  ~Descriptor() {
    if (number >= 0) close(number);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  const int number;
};

static std::string reasonOf(int error) {
  return std::strerror(error);
}

// Bytes read; 0 at the end. Waits where a pipe has none yet.
static size_t readSome(int descriptor, const std::string& file, uint8_t* to, size_t bytes) {
  for (;;) {
    stopIfInterrupted();
    pollfd wait = {descriptor, POLLIN, 0};
    if (poll(&wait, 1, kPollMilliseconds) <= 0) continue;
    const ssize_t count = read(descriptor, to, bytes);
    if (count >= 0) return static_cast<size_t>(count);
    if (errno != EINTR && errno != EAGAIN) {
      failOnFile(file, "cannot be read: " + reasonOf(errno));
    }
  }
}

// At most `most` bytes; `size` is what there probably is.
static FileBytes readAll(int descriptor, const std::string& file, size_t size, size_t most) {
  const UnwatchedWait wait;
  FileBytes bytes;
  size_t room = std::min(most, size > 0 ? size + 1 : kFirstRoom);
  size_t done = 0;
  while (done < most) {
    bytes.resize(room);
    const size_t count =
        readSome(descriptor, file, bytes.data() + done, std::min(room - done, kPieceBytes));
    if (count == 0) break;
    done += count;
    if (done == room) room = std::min(most, 2 * room);
    if (done >= kLargestInput) failOnFile(file, kTooLarge);
  }
  bytes.resize(done);
  if (bytes.empty()) failOnFile(file, "is empty");
  return bytes;
}

// Devices give for ever, but for a terminal and the one that gives nothing.
static bool isEndless(const struct stat& about, int descriptor) {
  struct stat nothing = {};
  if (S_ISBLK(about.st_mode)) return true;
  if (!S_ISCHR(about.st_mode) || isatty(descriptor) == 1) return false;
  return stat("/dev/null", &nothing) != 0 || about.st_rdev != nothing.st_rdev;
}

static const FileBytes& standardInput(const std::string& kind) {
  static FileBytes kept;
  if (!kept.empty()) return kept;
  struct stat about = {};
  fstat(STDIN_FILENO, &about);
  if (isEndless(about, STDIN_FILENO)) failOnFile(kStandardStream, "is a device, not " + kind);
  const size_t size = S_ISREG(about.st_mode) ? static_cast<size_t>(about.st_size) : 0;
  if (size >= kLargestInput) failOnFile(kStandardStream, kTooLarge);
  kept = readAll(STDIN_FILENO, kStandardStream, size, kLargestInput);
  return kept;
}

static FileBytes readFrom(const std::string& file, const std::string& kind, size_t most) {
  if (!fileExists(file)) failOnFile(file, "there is no such file");
  if (isFolder(file)) failOnFile(file, "is a folder, not " + kind);
  // A pipe without a writer would hold an open call up.
  const Descriptor source(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (source.number < 0) {
    if (errno == ENXIO) failOnFile(file, "is a socket, not " + kind);
    failOnFile(file, "cannot be read: " + reasonOf(errno));
  }
  struct stat about = {};
  fstat(source.number, &about);
  if (S_ISCHR(about.st_mode) || S_ISBLK(about.st_mode)) {
    failOnFile(file, "is a device, not " + kind);
  }
  const size_t size = S_ISREG(about.st_mode) ? static_cast<size_t>(about.st_size) : 0;
  if (size >= kLargestInput && most >= kLargestInput) failOnFile(file, kTooLarge);
  return readAll(source.number, file, std::min(size, most), most);
}

FileBytes readWholeFile(const std::string& file, const std::string& kind) {
  return file == kStandardStream ? standardInput(kind) : readFrom(file, kind, kLargestInput);
}

FileBytes readFileStart(const std::string& file, const std::string& kind, size_t bytes) {
  if (file != kStandardStream) return readFrom(file, kind, bytes);
  return BytesView(standardInput(kind)).part(0, bytes).copy();
}

// --- Writing --------------------------------------------------------------------------------

static bool lacksStandardOutput = false;

void fillStandardStreams() {
  for (int descriptor = 0; descriptor <= 2; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) >= 0) continue;
    if (descriptor == STDOUT_FILENO) lacksStandardOutput = true;
    if (open("/dev/null", O_RDWR) != descriptor) return;
  }
}

static void checkNameLength(const std::string& file) {
  size_t longest = 0;
  std::istringstream parts(file);
  for (std::string part; std::getline(parts, part, '/');) longest = std::max(longest, part.size());
  if (longest > NAME_MAX || file.size() >= PATH_MAX) failOnFile(file, "its name is too long");
}

// A draft in a folder; its descriptor, or -1 with errno.
static int makeDraft(const std::string& folder, std::string* draft) {
  stopIfInterrupted();  // which leaves the time to note it
  *draft = folder + "/.morvalis-XXXXXX";
  const int descriptor = mkostemp(draft->data(), O_CLOEXEC);
  if (descriptor < 0) {
    draft->clear();
  } else {
    noteLeftover(*draft);
  }
  return descriptor;
}

// Rights alone do not tell (read-only disks, quotas), so a file is made and removed again.
void checkWritable(const std::string& file) {
  if (file == kStandardStream) {
    if (lacksStandardOutput) failOnUsage("-o -: standard output is closed");
    if (isatty(STDOUT_FILENO) == 1) {
      failOnUsage("-o -: standard output is a terminal; send it into a file or a program");
    }
    return;
  }
  checkNameLength(file);
  if (isFolder(file)) failOnFile(file, "is a folder");
  if (fileExists(file)) {
    if (!isOrdinaryFile(file)) failOnFile(file, "is not an ordinary file");
    if (access(file.c_str(), W_OK) != 0) failOnFile(file, "is write-protected");
  }
  const std::string folder = folderOf(file);
  if (!fileExists(folder)) failOnFile(file, "its folder does not exist");
  if (!isFolder(folder)) failOnFile(file, "its folder is not a folder");
  std::string draft;
  const Descriptor trial(makeDraft(folder, &draft));
  if (trial.number < 0) {
    failOnFile(file, "its folder cannot be written to: " + reasonOf(errno));
  }
  unlink(draft.c_str());
  forgetLeftover(draft);
}

OutputFile::~OutputFile() {
  if (descriptor >= 0 && !draft.empty()) close(descriptor);
  if (draft.empty()) return;
  unlink(draft.c_str());
  forgetLeftover(draft);
}

// The rights of the file that is replaced, or those of any new file.
static mode_t rightsFor(const std::string& place) {
  struct stat about = {};
  if (stat(place.c_str(), &about) == 0) return about.st_mode & 07777;
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

[[noreturn]] static void failOnWriting(const OutputFile& output, int error) {
  if (output.draft.empty()) {
    throw CommandFailure{kExitFailed, "standard output: cannot be written"};
  }
  failOnFile(output.name, "cannot be written: " + reasonOf(error));
}

void openOutput(const std::string& file, OutputFile* output) {
  output->name = file;
  if (file == kStandardStream) {
    output->descriptor = STDOUT_FILENO;
    return;
  }
  output->place = placeOf(file);  // behind a link, so that the link stays
  output->descriptor = makeDraft(folderOf(output->place), &output->draft);
  if (output->descriptor < 0) failOnFile(file, "cannot be written: " + reasonOf(errno));
}

void appendOutput(BytesView bytes, OutputFile* output) {
  while (bytes.size > 0) {
    stopIfInterrupted();
    pollfd wait = {output->descriptor, POLLOUT, 0};
    if (poll(&wait, 1, kPollMilliseconds) <= 0) continue;
    const ssize_t count = write(output->descriptor, bytes.data, bytes.size);
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    if (count < 0) failOnWriting(*output, errno);
    bytes = bytes.part(static_cast<size_t>(count));
  }
}

// Before a file takes another's place; some file systems know no such call.
static bool reachesDisk(int descriptor) {
  return fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
}

static std::string numberedName;  // empty: files may be replaced

void replaceNothing(const std::string& wanted) {
  numberedName = lastName(wanted);
}

// Also by a link that leads nowhere.
static bool isTaken(const std::string& place) {
  struct stat about = {};
  return lstat(place.c_str(), &about) == 0;
}

// False, with errno, when the place is taken. File systems without that call are looked at first.
static bool moveToFreePlace(const std::string& draft, const std::string& place) {
  const int failed = renameat2(AT_FDCWD, draft.c_str(), AT_FDCWD, place.c_str(), RENAME_NOREPLACE);
  if (failed == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  if (!isTaken(place)) return rename(draft.c_str(), place.c_str()) == 0;
  errno = EEXIST;
  return false;
}

static bool takePlace(const OutputFile& output) {
  if (numberedName.empty()) return rename(output.draft.c_str(), output.place.c_str()) == 0;
  const std::string wanted = folderOf(output.place) + "/" + numberedName;
  const auto isOther = [&wanted](const std::string& name) {
    return name == wanted || isTaken(name);
  };
  std::string place = output.place;
  while (!moveToFreePlace(output.draft, place)) {
    if (errno != EEXIST) return false;
    place = freeName(wanted, isOther);
  }
  if (place != output.place) {
    reportWarning(output.name + ": has been taken meanwhile; the result is " + place);
  }
  return true;
}

void finishOutput(OutputFile* output) {
  stopIfInterrupted();
  if (output->draft.empty()) {
    struct stat about = {};
    const bool file = fstat(output->descriptor, &about) == 0 && S_ISREG(about.st_mode);
    if (file && !reachesDisk(output->descriptor)) failOnWriting(*output, errno);
    return;
  }
  const bool allowed = fchmod(output->descriptor, rightsFor(output->place)) == 0;
  const bool safe = allowed && reachesDisk(output->descriptor);
  const int descriptor = std::exchange(output->descriptor, -1);
  if (close(descriptor) != 0 || !safe || !takePlace(*output)) {
    failOnWriting(*output, errno);
  }
  forgetLeftover(output->draft);
  output->draft.clear();
}

void writeWholeFile(const std::string& file, BytesView contents) {
  OutputFile output;
  openOutput(file, &output);
  appendOutput(contents, &output);
  finishOutput(&output);
}
