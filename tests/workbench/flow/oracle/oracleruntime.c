/* What the instrumented copies of generated programs call: it keeps for each byte of the watched storage which
   statement wrote it last, and logs what happens. Statements and conditions go by their row in the plain text, which
   holds all programs of a run.

     S row                        the statement runs
     C row sense                  the condition comes out true (1) or false (0)
     R row name area offset length writer   the data item is read, and the statement at row `writer` wrote these bytes,
                                  as bytes of an area of the program that it stands in; 0 when none has

   Lines of kind R that were logged before are left out, since only the pairs count. */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum {
  kViews = 256,
  kFrames = 16,
  kParameters = 8,
  kMostBytes = 512,
  kSeen = 1 << 16,
  kSnapshots = 8,
  kBytes = 1 << 14
};

/* An area as a running program knows it; a parameter is another view of bytes of the program that calls. */
struct View {
  const char* name;
  unsigned char* begin;
  int length;
};

/* What is known of one byte. */
struct Shadow {
  const unsigned char* at;
  const char* area; /* of the program that wrote it */
  int offset;
  int writer;
  unsigned change; /* larger when it was written later */
};

/* A call that has not come back yet. */
struct Frame {
  int views;                                  /* of the programs around */
  int row;                                    /* of the CALL */
  int isUnknown;                              /* nothing can be known of what it leads to */
  unsigned change;                            /* the last one before it */
  const unsigned char* contents[kParameters]; /* what is handed over by content or value */
  struct Shadow before[kMostBytes];           /* of the bytes hidden */
  int kept;
};

static struct View views[kViews];
static int viewCount;
static const char* names[kViews];
static struct Frame frames[kFrames];
static int frameCount;
static int isFresh; /* the program that tells its areas */
static struct Shadow shadows[kBytes];
static unsigned changes;
static FILE* logFile;
static uint64_t seen[kSeen];
static unsigned char snapshots[kSnapshots][kMostBytes];

static void Fail(const char* what) {
  fprintf(stderr, "oracle: %s\n", what);
  exit(90);
}

static FILE* Log(void) {
  if (logFile == NULL) {
    const char* path = getenv("FLOW_ORACLE_LOG");
    logFile = path == NULL ? NULL : fopen(path, "w");
    if (logFile == NULL) Fail("FLOW_ORACLE_LOG does not name a file that can be written");
  }
  return logFile;
}

static struct Shadow* ShadowOf(const unsigned char* byte) {
  for (size_t at = (uintptr_t)byte * 2654435761U % kBytes;; at = (at + 1) % kBytes) {
    if (shadows[at].at == byte) return &shadows[at];
    if (shadows[at].at != NULL) continue;
    shadows[at].at = byte;
    return &shadows[at];
  }
}

static const struct View* ViewOf(const unsigned char* bytes, int length) {
  const int first = frameCount == 0 ? 0 : frames[frameCount - 1].views;
  for (int i = first; i < viewCount; ++i) {
    if (bytes < views[i].begin || bytes >= views[i].begin + views[i].length) continue;
    if (bytes + length > views[i].begin + views[i].length) Fail("an operand reaches past its area");
    return &views[i];
  }
  Fail("an operand lies outside the watched areas");
  return NULL;
}

static void Write(int row, const struct View* view, const unsigned char* byte) {
  struct Shadow* shadow = ShadowOf(byte);
  shadow->writer = row;
  shadow->area = view->name;
  shadow->offset = (int)(byte - view->begin);
  shadow->change = ++changes;
}

/* True when these come for the first time. */
static int IsNew(int row, const char* name, const char* area, int offset, int length, int writer) {
  uint64_t hash = 14695981039346656037ULL;
  const int numbers[] = {row, offset, length, writer};
  for (size_t i = 0; i < sizeof numbers / sizeof *numbers; ++i) hash = (hash ^ (uint64_t)numbers[i]) * 1099511628211ULL;
  for (; *name != '\0'; ++name) hash = (hash ^ (uint64_t)(unsigned char)*name) * 1099511628211ULL;
  for (; *area != '\0'; ++area) hash = (hash ^ (uint64_t)(unsigned char)*area) * 1099511628211ULL;
  if (hash == 0) hash = 1;
  for (uint64_t at = hash % kSeen;; at = (at + 1) % kSeen) {
    if (seen[at] == hash) return 0;
    if (seen[at] == 0) {
      seen[at] = hash;
      return 1;
    }
  }
}

/* One text for all that are equal. */
static const char* Kept(const char* name) {
  int i = 0;
  while (names[i] != NULL && strcmp(names[i], name) != 0) ++i;
  if (i + 1 == kViews) Fail("too many areas");
  if (names[i] == NULL) names[i] = strdup(name);
  return names[i];
}

static const struct View* AddView(const char* name, unsigned char* bytes, int length) {
  if (viewCount == kViews || length > kMostBytes) Fail("too many or too large areas");
  struct View* view = &views[viewCount++];
  view->name = Kept(name);
  view->begin = bytes;
  view->length = length;
  return view;
}

/* `fresh` is an item of the program with the first value 1: a call finds that value when it finds all the storage of
   the program with its first values. */
int orbegin(unsigned char* fresh) {
  isFresh = *fresh == '1';
  *fresh = '0';
  return 0;
}

/* Storage that keeps its values from one call of its program to the next, unless the program begins afresh. */
int orarea(const char* name, unsigned char* bytes, int length) {
  const struct View* view = AddView(name, bytes, length);
  for (int at = 0; at < length; ++at) {
    if (isFresh || ShadowOf(bytes + at)->area == NULL) Write(0, view, bytes + at);
  }
  return 0;
}

/* Storage that each call of its program finds with its first values. */
int orlocal(const char* name, unsigned char* bytes, int length) {
  const struct View* view = AddView(name, bytes, length);
  for (int at = 0; at < length; ++at) Write(0, view, bytes + at);
  return 0;
}

/* Keeps what is known of a byte until the call comes back; the called program finds it as if nothing had written it. */
static void Hide(struct Frame* frame, const struct View* view, unsigned char* byte) {
  struct Shadow* shadow = ShadowOf(byte);
  if (frame->kept == kMostBytes) Fail("too many bytes are handed over");
  frame->before[frame->kept++] = *shadow;
  const unsigned change = shadow->change;
  Write(0, view, byte);
  shadow->change = change; /* nothing is written here */
}

/* Storage that several programs have in common: of what another one has written in a call, its call has. */
int orshared(const char* name, unsigned char* bytes, int length) {
  if (frameCount == 0) return orarea(name, bytes, length);
  const struct View* view = AddView(name, bytes, length);
  for (int at = 0; at < length; ++at) Hide(&frames[frameCount - 1], view, bytes + at);
  return 0;
}

/* What the program gets from its caller, by position from 0. */
int orparam(const char* name, unsigned char* bytes, int length, int position) {
  const struct View* view = AddView(name, bytes, length);
  struct Frame* frame = &frames[frameCount - 1];
  const unsigned char* content = frame->contents[position];
  for (int at = 0; at < length; ++at) {
    struct Shadow* shadow = ShadowOf(bytes + at);
    if (content != NULL) {
      const struct Shadow* source = ShadowOf(content + at);
      shadow->area = source->area;
      shadow->offset = source->offset;
      shadow->writer = source->writer;
      shadow->change = ++changes;
    }
    if (shadow->area == NULL) Fail("nothing is known of what an argument holds");
    if (!frame->isUnknown) continue;
    if (content == NULL) {
      Hide(frame, view, bytes + at);
      continue;
    }
    const unsigned change = shadow->change;
    Write(0, view, bytes + at);
    shadow->change = change;
  }
  return 0;
}

int orcall(int row, int isUnknown) {
  if (frameCount == kFrames) Fail("too many calls within each other");
  struct Frame* frame = &frames[frameCount++];
  memset(frame, 0, sizeof *frame);
  frame->views = viewCount;
  frame->row = row;
  frame->isUnknown = isUnknown;
  frame->change = changes;
  return 0;
}

/* The argument that the call hands over a copy of; tell it before the call. */
int orcontent(int position, const unsigned char* bytes) {
  frames[frameCount - 1].contents[position] = bytes;
  return 0;
}

/* Behind a call. What is hidden and was written meanwhile, the call has written. */
int orreturned(void) {
  const struct Frame frame = frames[--frameCount];
  viewCount = frame.views;
  for (int i = 0; i < frame.kept; ++i) {
    struct Shadow* shadow = ShadowOf(frame.before[i].at);
    if (shadow->change <= frame.change) {
      *shadow = frame.before[i];
    } else {
      Write(frame.row, ViewOf(frame.before[i].at, 1), frame.before[i].at);
    }
  }
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

int orread(int row, const char* name, const unsigned char* bytes, int length) {
  ViewOf(bytes, length);
  for (int at = 0; at < length;) {
    const struct Shadow first = *ShadowOf(bytes + at);
    int end = at + 1;
    for (; end < length; ++end) {
      const struct Shadow* next = ShadowOf(bytes + end);
      if (next->writer != first.writer || next->area != first.area || next->offset != first.offset + end - at) break;
    }
    if (IsNew(row, name, first.area, first.offset, end - at, first.writer)) {
      fprintf(Log(), "R %d %s %s %d %d %d\n", row, name, first.area, first.offset, end - at, first.writer);
    }
    at = end;
  }
  return 0;
}

/* The statement has written all of these bytes. */
int orwrite(int row, const unsigned char* bytes, int length) {
  const struct View* view = ViewOf(bytes, length);
  for (int at = 0; at < length; ++at) Write(row, view, bytes + at);
  return 0;
}

/* For a statement that may write some of the bytes: keeps what they hold before it; then takes those for written that
   have changed. */
int orbefore(int slot, const unsigned char* bytes, int length) {
  ViewOf(bytes, length);
  memcpy(snapshots[slot], bytes, (size_t)length);
  return 0;
}

int orafter(int row, int slot, const unsigned char* bytes, int length) {
  const struct View* view = ViewOf(bytes, length);
  for (int at = 0; at < length; ++at) {
    if (snapshots[slot][at] != bytes[at]) Write(row, view, bytes + at);
  }
  return 0;
}

/* A program of another language that changes its second argument, and does so only sometimes. */
int orother(const unsigned char* in, unsigned char* inOut) {
  if (in[0] % 3 != 0) inOut[0] = (unsigned char)('0' + in[0] % 10);
  return 0;
}
