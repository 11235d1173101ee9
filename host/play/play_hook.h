#ifndef HOST_PLAY_PLAY_HOOK_H_
#define HOST_PLAY_PLAY_HOOK_H_

namespace kvlhost {

// For tests that change the file under a play without racing it: with
// KVL_PLAY_HOOK=POINT:COMMAND in the environment, reaching POINT runs COMMAND
// through the shell and goes on once it has ended. The points are "probed"
// (canPlay answered, open not yet called) and "reading" (every stream open,
// nothing read yet). Not an option and not in --help: users have no need of it.
void RunPlayHook(const char* point);

}  // namespace kvlhost

#endif  // HOST_PLAY_PLAY_HOOK_H_
