// How long a test waits for what is to come. Not a measure of anything: only a fault reaches it, never a
// machine that is slow, busy, or an emulated one.
#ifndef TESTS_SUPPORT_PATIENCE_H
#define TESTS_SUPPORT_PATIENCE_H

const int PATIENCE_MS = 120000;

#endif
