// A library that can be asked for its version, and nothing else.
int versionSample(void);
int versionSample(void) { return 1; }
