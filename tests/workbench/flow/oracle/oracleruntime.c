/* What the instrumented copy of a generated program calls: it keeps for each byte of the watched areas which statement
   wrote it last, and logs what happens. Statements and conditions go by their row in the plain program.

     S row                        the statement runs
     C row sense                  the condition comes out true (1) or false (0)
     R row name area offset length writer   these bytes are read, and `writer` wrote them; 0 when nothing has

   Lines that were logged before are left out of R, since only the pairs count. */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { kAreas = 64, kMostBytes = 512, kSeen = 1 << 16, kSnapshots = 8 };

struct Area {
  const char *name;
  unsigned char *begin;
  int length;
  int writers[kMostBytes];
};

static struct Area areas[kAreas];
static int areaCount;
static FILE *logFile;
static uint64_t seen[kSeen];
static unsigned char snapshots[kSnapshots][kMostBytes];

static void Fail(const char *what) {
  fprintf(stderr, "oracle: %s\n", what);
  exit(90);
}

static FILE *Log(void) {
  if (logFile == NULL) {
    const char *path = getenv("FLOW_ORACLE_LOG");
    logFile = path == NULL ? NULL : fopen(path, "w");
    if (logFile == NULL) Fail("FLOW_ORACLE_LOG does not name a file that can be written");
  }
  return logFile;
}

static struct Area *AreaOf(const unsigned char *bytes) {
  for (int i = 0; i < areaCount; ++i) {
    if (bytes >= areas[i].begin && bytes < areas[i].begin + areas[i].length) return &areas[i];
  }
  Fail("an operand lies outside the watched areas");
  return NULL;
}

static struct Area *Checked(unsigned char *bytes, int length) {
  struct Area *area = AreaOf(bytes);
  if (bytes + length > area->begin + area->length) Fail("an operand reaches past its area");
  return area;
}

/* True when these numbers come for the first time. */
static int IsNew(int row, const char *name, int area, int offset, int length, int writer) {
  uint64_t hash = 14695981039346656037ULL;
  const int numbers[] = {row, area, offset, length, writer};
  for (size_t i = 0; i < sizeof numbers / sizeof *numbers; ++i) hash = (hash ^ (uint64_t)numbers[i]) * 1099511628211ULL;
  for (; *name != '\0'; ++name) hash = (hash ^ (uint64_t)(unsigned char)*name) * 1099511628211ULL;
  if (hash == 0) hash = 1;
  for (uint64_t at = hash % kSeen;; at = (at + 1) % kSeen) {
    if (seen[at] == hash) return 0;
    if (seen[at] == 0) {
      seen[at] = hash;
      return 1;
    }
  }
}

int orarea(const char *name, unsigned char *bytes, int length) {
  if (areaCount == kAreas || length > kMostBytes) Fail("too many or too large areas");
  areas[areaCount].name = strdup(name);
  areas[areaCount].begin = bytes;
  areas[areaCount].length = length;
  ++areaCount;
  return 0;
}

int orstat(int row) {
  fprintf(Log(), "S %d\n", row);
  return 0;
}

int orcond(int row, int sense) {
  fprintf(Log(), "C %d %d\n", row, sense);
  return 0;
}

int orread(int row, const char *name, unsigned char *bytes, int length) {
  struct Area *area = Checked(bytes, length);
  const int offset = (int)(bytes - area->begin);
  for (int at = 0; at < length;) {
    const int writer = area->writers[offset + at];
    int end = at + 1;
    while (end < length && area->writers[offset + end] == writer) ++end;
    if (IsNew(row, name, (int)(area - areas), offset + at, end - at, writer)) {
      fprintf(Log(), "R %d %s %s %d %d %d\n", row, name, area->name, offset + at, end - at, writer);
    }
    at = end;
  }
  return 0;
}

/* The statement has written all of these bytes. */
int orwrite(int row, unsigned char *bytes, int length) {
  struct Area *area = Checked(bytes, length);
  for (int at = 0; at < length; ++at) area->writers[bytes - area->begin + at] = row;
  return 0;
}

/* For a statement that may write some of the bytes: keeps what they hold before it; then takes those for written that
   have changed. */
int orbefore(int slot, unsigned char *bytes, int length) {
  Checked(bytes, length);
  memcpy(snapshots[slot], bytes, (size_t)length);
  return 0;
}

int orafter(int row, int slot, unsigned char *bytes, int length) {
  struct Area *area = Checked(bytes, length);
  for (int at = 0; at < length; ++at) {
    if (snapshots[slot][at] != bytes[at]) area->writers[bytes - area->begin + at] = row;
  }
  return 0;
}

/* A program of another language that changes its second argument, and does so only sometimes. */
int orother(const unsigned char *in, unsigned char *inOut) {
  if (in[0] % 3 != 0) inOut[0] = (unsigned char)('0' + in[0] % 10);
  return 0;
}
