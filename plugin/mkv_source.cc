#include "plugin/mkv_source.h"

#include <memory>

#include <boost/assign/list_of.hpp>
#include <boost/thread/locks.hpp>

#include "plugin/interface_names.h"
#include "plugin/kvl/result_codes.h"
#include "reader/mkv_reader.h"
#include "source/cluster_heads.h"
#include "source/chapter_info.h"
#include "source/title_info.h"
#include "streams/title_internal.h"

namespace KVL {

MKVSource::MKVSource(PluginContext* context) : MKVSource(context, new MkvReader) {}

MKVSource::MKVSource(PluginContext* context, IMkvReader* ownedReader)
    : Plugin(context), reader(ownedReader) {
  // Members unwind by themselves if this throws; the owned pointers don't.
  std::unique_ptr<IMkvReader> readerGuard(ownedReader);
  std::unique_ptr<TitleInternal> titleGuard(new TitleInternal(this));
  clusterHeads.reset(new ClusterHeads);
  const vorq_string<unsigned char> matroska(
      reinterpret_cast<const unsigned char*>("video/x-matroska"));
  std::map<vorq_string<unsigned char>, unsigned int> types =
      boost::assign::map_list_of(matroska, 1u);
  mimeTypes = types;
  mainTitle = titleGuard.release();
  readerGuard.release();
}

MKVSource::~MKVSource() {
  mainTitle->loaded = false;
  close();
  delete mainTitle;
  // Auxiliary records are made only on request and nobody else frees them.
  for (auto& entry : auxiliaryTitles) delete entry.second;
  auxiliaryTitles.clear();
  releaseInspectedFile();
  // The segment keeps a plain pointer to the reader: it goes first.
  delete segment;
  for (mkvparser::Segment* retired : retiredSegments) delete retired;
  delete reader;
}

size_t MKVSource::parsedClusters() const {
  boost::unique_lock<boost::recursive_mutex> lock(mainTitle->mutex);
  return mainTitle->clusters.size() + (segment ? segment->GetCount() : 0);
}

int MKVSource::getInterface(const vorq_string<char>& name, void** result) {
  if (!result) return kNoSuchInterface;
  *result = nullptr;
  if (name == kContainerInterfaceName) {
    *result = static_cast<ContainerInterface*>(this);
    return 0;
  }
  if (name == kFileInspectorInterfaceName) {
    *result = static_cast<FileInspectorInterface*>(this);
    return 0;
  }
  return kNoSuchInterface;
}

// Doesn't free a document that may stand there: the engine calls this
// before open().
void MKVSource::init(ControlInterface* control, unsigned long long uid) {
  this->control = control;
  containerUid = uid;
  metadata = nullptr;
}

}  // namespace KVL
