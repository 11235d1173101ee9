#ifndef PLUGIN_MKV_SOURCE_H_
#define PLUGIN_MKV_SOURCE_H_

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "mkvparser/mkvparser.h"
#include "plugin/kvl/container_interface.h"
#include "plugin/kvl/file_inspector_interface.h"
#include "plugin/kvl/media_interface.h"
#include "plugin/kvl/media_source.h"
#include "plugin/kvl/plugin.h"
#include "plugin/kvl/remote_file_interface.h"
#include "plugin/kvl/saved_session.h"
#include "reader/mkv_reader_interface.h"

struct _xmlNode;

namespace KVL {

class ClusterHeads;

// The Matroska demultiplexer: one object is the plug-in, its container, its
// chapter navigation and its file inspector.
//
// Ownership: the object owns `reader` (deleted through the interface at the
// end), the parser's `segment`, `mainTitle`, the records in `titles` and
// `chapters` (deleted by close()), the metadata document (freed by close())
// and `inspectedFile`. Stream objects are the engine's from addStream() on.
//
// Locking: `mainTitle->mutex` is the one lock of a source and its streams.
// open(), close(), openTitle(), closeTitle(), playFirstTitle(), getFileSize()
// and getBufferingProgress() hold it for their whole length, the file reads
// and the calls into the engine included. It is recursive because the engine
// comes back on the same thread: into openTitle() from playFirstTitle()'s
// request, into the VideoStream destructor from closeTitle()'s removeStream().
// canPlay(), closeSavedSession(), init(), getInterface(), the title and
// chapter queries and the inspector take no lock: the engine doesn't run them
// at the same time as an operation that changes what they read. Which stream
// operations take it is told in MKVStream.
class MKVSource : public Plugin,
                  public ContainerInterface,
                  public MediaInterface,
                  public RemoteFileInterface,
                  public FileInspectorInterface {
 public:
  struct ChapterInfo;
  struct TitleInfo;
  struct TitleInternal;
  struct tagData;
  class MKVStream;
  class VideoStream;
  class AudioStream;

  explicit MKVSource(PluginContext* context);
  // Takes `reader` over.
  MKVSource(PluginContext* context, IMkvReader* reader);
  ~MKVSource() override;
  MKVSource(const MKVSource&) = delete;
  MKVSource& operator=(const MKVSource&) = delete;

  // Plugin
  int getInterface(const vorq_string<char>& name, void** result) override;

  // ContainerInterface
  void init(ControlInterface* control, unsigned long long uid) override;
  bool canPlay(MediaSource& source, const PlaybackProfile* profile, void** savedSession,
               std::vector<FormatDescriptor>* unsupportedFormats) override;
  void closeSavedSession(void* session) override;
  int open(const MediaSource& source) override;
  int open(void* session) override;
  vorq_string<unsigned char> getFilename() override;
  int close() override;
  List<unsigned long long> getTitles() override;
  vorq_string<unsigned char> getTitleName(unsigned long long uid) override;
  int openTitle(unsigned long long uid) override;
  int closeTitle(bool keep) override;
  int getFileSize(unsigned long long* size) override;

  // MediaInterface
  List<unsigned long long> getChapters(unsigned long long titleUID) override;
  vorq_string<unsigned char> getChapterName(unsigned long long uid) override;
  uint32_t getChapterStartTime(unsigned long long uid) override;
  uint32_t getChapterEndTime(unsigned long long uid) override;
  unsigned long long getCurrentChapter() override;
  void selectChapter(unsigned long long uid) override;
  void playFirstTitle() override;

  // RemoteFileInterface
  int getBufferingProgress() override;

  // FileInspectorInterface
  unsigned int openFile(const vorq_string<unsigned char>& uri) override;
  int closeFile() override;
  int getSize(unsigned long long& size) override;
  int getDuration(unsigned long index, unsigned long long& duration) override;

  // Further records of this source by key; the map doesn't own them.
  TitleInternal* loadAuxillaryTitle(short key);
  void unloadAuxillaryTitle(short key);
  bool unloadInternal();

  // A new chapter record entered in no map; the caller owns it.
  ChapterInfo* _getChapterInfo(unsigned long long titleUID, unsigned int, unsigned int index);

  void setDefaultAudioLanguage(std::string language);
  void setDefaultSubtitleLanguage(std::string language);
  void processTitleMetadata(unsigned int);
  // Adds the elements of one SimpleTag under `node` and empties `tag`.
  void processSimpleTag(_xmlNode* node, tagData* tag);
  void cleanMetadata();

  // How many cluster objects the source keeps, the segment's and those the
  // title's readers hold parsed: bounded, whatever the file's length.
  size_t parsedClusters() const;

  bool isClosing() const { return closing != 0; }
  void executeStateChange() {}

 private:
  bool openInternal(const MediaSource* source, SavedSession* session);
  bool loadInternal();
  bool parseSegment();
  unsigned long long addReader(MKVStream* reader);
  void initMetadata();
  void releaseInspectedFile();

  struct InspectedFile {
    char* path;
  };

  IMkvReader* reader = nullptr;
  mkvparser::EBMLHeader ebmlHeader;
  mkvparser::Segment* segment = nullptr;
  // The clusters of `segment`, which keeps none itself; never null.
  std::unique_ptr<ClusterHeads> clusterHeads;
  // Segments of earlier probes, kept alive for the pointers into them.
  std::vector<mkvparser::Segment*> retiredSegments;
  const mkvparser::SegmentInfo* segmentInfo = nullptr;
  // The segment's duration in nanoseconds, taken by the probe; -1 for none.
  int64_t segmentDuration = -1;
  const mkvparser::Tracks* tracks = nullptr;
  std::vector<const mkvparser::VideoTrack*> videoTracks;
  std::vector<const mkvparser::AudioTrack*> audioTracks;
  std::map<unsigned long long, TitleInfo*> titles;
  std::map<unsigned long long, ChapterInfo*> chapters;
  std::basic_string<unsigned char> uri;
  std::vector<unsigned long long> openStreams;
  TitleInternal* mainTitle = nullptr;
  std::map<short, TitleInternal*> auxiliaryTitles;
  ReadInterfaces readInterfaces;
  unsigned char closing = 0;
  InspectedFile* inspectedFile = nullptr;
};

}  // namespace KVL

#endif  // PLUGIN_MKV_SOURCE_H_
