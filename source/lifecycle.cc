#include <libxml/tree.h>

#include <cstdio>

#include <boost/thread/locks.hpp>

#include "plugin/kvl/result_codes.h"
#include "plugin/kvl/saved_session.h"
#include "plugin/mkv_source.h"
#include "runtime/paths/path_tools.h"
#include "source/chapter_info.h"
#include "source/title_info.h"
#include "streams/title_internal.h"

namespace KVL {

using SourceLock = boost::unique_lock<boost::recursive_mutex>;

// Publishing needs the engine's control object, which init() delivers.
int MKVSource::open(const MediaSource& source) {
  if (!control) return kFailed;
  SourceLock lock(mainTitle->mutex);
  return openInternal(&source, nullptr) && loadInternal() ? 0 : kFailed;
}

int MKVSource::open(void* session) {
  // The engine always passes the session that canPlay() made.
  if (!session) return kFailed;
  if (!control) {
    delete static_cast<SavedSession*>(session);
    return kFailed;
  }
  SourceLock lock(mainTitle->mutex);
  return openInternal(nullptr, static_cast<SavedSession*>(session)) && loadInternal() ? 0 : kFailed;
}

bool MKVSource::openInternal(const MediaSource* source, SavedSession* session) {
  if (session) {
    source = session->source;
    delete session;
  }
  if (!source) return false;
  const vorq_string<unsigned char>& sourceUri = source->getUri();
  uri = sourceUri.toStlString();

  vorq_string<unsigned char> path;
  if (PathTools::URIToSystemFilePath(sourceUri, path) != 0) return false;
  const int opened = reader->Open(reinterpret_cast<const char*>(path.data()));
  if (opened != 0) {
    std::printf("open failed on '%s' with %d\n", reinterpret_cast<const char*>(uri.c_str()),
                opened);
    return false;
  }
  readInterfaces = source->getReadInterfaces();
  if (readInterfaces.verifier()) std::puts("VerifierInterface is enabled. Search for Gold File");
  initMetadata();
  return true;
}

void MKVSource::initMetadata() {
  metadata = xmlNewDoc(BAD_CAST "1.0");
  xmlDocSetRootElement(metadata, xmlNewNode(nullptr, BAD_CAST "file_info"));
}

void MKVSource::cleanMetadata() {
  if (!metadata) return;
  xmlFreeDoc(metadata);
  metadata = nullptr;
}

int MKVSource::close() {
  closing = 1;
  SourceLock lock(mainTitle->mutex);
  cleanMetadata();
  mainTitle->loaded = false;
  reader->Close();
  for (auto& title : titles) delete title.second;
  titles.clear();
  for (auto& chapter : chapters) delete chapter.second;
  chapters.clear();
  return 0;
}

void MKVSource::closeSavedSession(void* session) {
  if (!session) return;
  reader->Close();
  delete static_cast<SavedSession*>(session);
}

}  // namespace KVL
