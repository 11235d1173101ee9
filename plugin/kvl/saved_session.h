#ifndef PLUGIN_KVL_SAVED_SESSION_H_
#define PLUGIN_KVL_SAVED_SESSION_H_

namespace KVL {

class MediaSource;

// What canPlay() hands the engine and open() or closeSavedSession() takes
// back and frees. The source stays the engine's.
struct SavedSession {
  MediaSource* source;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_SAVED_SESSION_H_
