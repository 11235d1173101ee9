#ifndef PLUGIN_KVL_EXPORT_H_
#define PLUGIN_KVL_EXPORT_H_

// The engine's classes keep default visibility so that their code, vtables
// and type information are the engine library's, shared by every module.
#define KVL_API __attribute__((visibility("default")))

#endif  // PLUGIN_KVL_EXPORT_H_
