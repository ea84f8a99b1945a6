// A save that writes many keys, made into one: the writes between begin and end are held in memory, and the
// file is replaced once, at the end, with all of them or none. An operation of this layer's own; each
// system's folder implements it. Where the system keeps profiles by other means, it may do nothing.
#pragma once

// Begins to hold the writes to the profile `file`; its keys read as they will be. Batches of one file may be
// nested, and the outermost counts. Another file may be read and written meanwhile, but not in a batch.
void BeginProfileBatch(const char* file);

// Ends the batch: reads the file as it is now, applies the writes in their order, and replaces it. False
// when that failed; the old file stands then.
bool EndProfileBatch();

class ProfileBatch {
 public:
  explicit ProfileBatch(const char* file) { BeginProfileBatch(file); }
  ~ProfileBatch() { EndProfileBatch(); }
  ProfileBatch(const ProfileBatch&) = delete;
  ProfileBatch& operator=(const ProfileBatch&) = delete;
};
