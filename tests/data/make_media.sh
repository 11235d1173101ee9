#!/usr/bin/env bash
# Makes the Matroska files that the tests read, and the bundled sample, from
# synthetic sources only (lavfi testsrc / sine), with ffmpeg and mkvmerge.
# The outputs are committed; the tests and CI never run this script.
#
#   tests/data/media/h264_aac.mkv        H.264 + AAC, written by ffmpeg (no lacing)
#   tests/data/media/hevc_mp3.mkv        HEVC + MP3, written by ffmpeg
#   tests/data/media/h264_mp3_laced.mkv  H.264 + MP3, mkvmerge, MP3 frames laced
#   tests/data/media/h264_mp3_wide_pixels.mkv
#                                        the same with display size 320x120 over
#                                        160x120 pixels: pixels twice as wide as high
#   tests/data/media/h264_aac_scale100us.mkv
#                                        H.264 + AAC, mkvmerge, TimecodeScale 100000 ns,
#                                        AAC frames laced
#   tests/data/media/aac_only.mkv        AAC audio, no video track
#   tests/data/media/mpeg4_aac.mkv       MPEG-4 part 2 (pixel aspect 12:11) + AAC
#   samples/sample.mkv                   5 s of H.264 320x240 + AAC tone, a key
#                                        frame and a cluster every second
#
# Beside each file:
#   NAME.packets.csv  stream,pts,size,md5,key: ffprobe's packets in file order, one
#                     per frame (laced blocks split), pts in the stream's time
#                     base (Matroska ticks), md5 of the payload in lower-case hex,
#                     key 1 where ffprobe flags the packet a key frame, else 0.
#                     ffprobe interpolates the pts of the later frames of a laced
#                     block, or leaves it empty when it cannot.
#   NAME.streams.csv  index,codec_type,codec_name,time_base,sample_aspect_ratio
#                     (the last empty for audio)
#
# Video is track 1 and audio track 2 wherever there is video. Every mkvmerge
# call passes --compression ...:none so that the stored bytes are the frames.
# Run from anywhere: bash tests/data/make_media.sh
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
media="$root/tests/data/media"
samples="$root/samples"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$media" "$samples"

ff=(ffmpeg -nostdin -hide_banner -loglevel error -y)
# Inputs are synthetic; the outputs carry no encoder strings, no dates and no
# random identifiers, so reruns give the same bytes.
out_flags=(-map_metadata -1 -fflags +bitexact -flags:v +bitexact -flags:a +bitexact
           -threads 1 -cluster_time_limit 500)
x264=(-c:v libx264 -pix_fmt yuv420p -preset veryfast -tune zerolatency -g 25 -b:v 60k
      -x264-params threads=1:lookahead-threads=1)
mkvmerge_flags=(--quiet --no-date --disable-track-statistics-tags --deterministic 1
                --cluster-length 500ms)

video() {  # video SECONDS SIZE
  echo -f lavfi -i "testsrc=duration=$1:size=$2:rate=25"
}
tone() {  # tone SECONDS FREQUENCY
  echo -f lavfi -i "sine=frequency=$2:duration=$1:sample_rate=44100"
}

probe() {  # probe FILE: writes FILE's packet and stream lists beside it
  local file=$1 base=${1%.mkv}
  {
    echo "stream,pts,size,md5,key"
    # The flat format, since csv breaks a packet's line at its side data.
    ffprobe -v error -show_data_hash md5 \
      -show_entries packet=stream_index,pts,size,data_hash,flags \
      -of flat "$file" | tr -d '"' | awk -F'[.=]' '
        $1 == "packets" && $2 == "packet" { field[$3, $4] = $5; if ($3 > last) last = $3 }
        END {
          for (i = 0; i <= last; i++) {
            pts = field[i, "pts"] == "N/A" ? "" : field[i, "pts"]
            sub(/^MD5:/, "", field[i, "data_hash"])
            key = substr(field[i, "flags"], 1, 1) == "K" ? 1 : 0
            print field[i, "stream_index"] "," pts "," field[i, "size"] "," \
              field[i, "data_hash"] "," key
          }
        }'
  } > "$base.packets.csv"
  {
    echo "index,codec_type,codec_name,time_base,sample_aspect_ratio"
    # Keys and values, since an audio stream has no aspect ratio field at all.
    ffprobe -v error \
      -show_entries stream=index,codec_type,codec_name,time_base,sample_aspect_ratio \
      -of compact=p=0 "$file" | awk -F'|' -v OFS=, '{
        delete v
        for (i = 1; i <= NF; i++) { split($i, kv, "="); v[kv[1]] = kv[2] }
        print v["index"], v["codec_type"], v["codec_name"], v["time_base"], v["sample_aspect_ratio"]
      }'
  } > "$base.streams.csv"
}

# H.264 + AAC straight from ffmpeg: one frame per block.
"${ff[@]}" $(video 2 160x120) $(tone 2 440) "${x264[@]}" -c:a aac -b:a 32k -ac 1 \
  "${out_flags[@]}" "$media/h264_aac.mkv"

# HEVC + MP3.
"${ff[@]}" $(video 2 160x120) $(tone 2 660) -c:v libx265 -pix_fmt yuv420p -preset ultrafast -g 25 -b:v 60k \
  -x265-params log-level=error:pools=1:frame-threads=1:lookahead-threads=0 \
  -c:a libmp3lame -b:a 32k -ac 1 "${out_flags[@]}" "$media/hevc_mp3.mkv"

# mkvmerge laces audio that it reads from elementary streams (not from
# Matroska input), so its inputs are raw H.264 plus raw MP3 or ADTS AAC.
"${ff[@]}" $(video 2 160x120) "${x264[@]}" -bsf:v h264_mp4toannexb -fflags +bitexact \
  -f h264 "$work/video.h264"
"${ff[@]}" $(tone 2 550) -c:a libmp3lame -b:a 32k -ac 1 -fflags +bitexact -write_xing 0 \
  -id3v2_version 0 -f mp3 "$work/audio.mp3"
"${ff[@]}" $(tone 2 440) -c:a aac -b:a 32k -ac 1 -fflags +bitexact -f adts "$work/audio.aac"
remux() {  # remux OUTPUT AUDIO [mkvmerge options...]
  local out=$1 audio=$2
  shift 2
  mkvmerge "${mkvmerge_flags[@]}" "$@" -o "$out" \
    --compression 0:none --default-duration 0:25fps "$work/video.h264" \
    --compression 0:none "$audio"
}

# H.264 + MP3 with laced audio blocks.
remux "$media/h264_mp3_laced.mkv" "$work/audio.mp3"

# A stated display size: a pixel aspect ratio of 2:1.
remux "$media/h264_mp3_wide_pixels.mkv" "$work/audio.mp3" --display-dimensions 0:320x120

# TimecodeScale 100000 ns: ticks of a tenth of a millisecond; AAC laced too.
remux "$media/h264_aac_scale100us.mkv" "$work/audio.aac" --timestamp-scale 100000

# Audio only.
"${ff[@]}" $(tone 2 440) -c:a aac -b:a 32k -ac 1 "${out_flags[@]}" "$media/aac_only.mkv"

# MPEG-4 part 2 with a non-square pixel aspect ratio in its VOL header.
"${ff[@]}" $(video 2 176x144) $(tone 2 440) -vf setsar=12/11 -c:v mpeg4 -g 25 -b:v 80k \
  -c:a aac -b:a 32k -ac 1 "${out_flags[@]}" "$media/mpeg4_aac.mkv"

# The bundled sample: something to watch and hear, seekable by the second.
"${ff[@]}" -f lavfi -i "testsrc2=duration=5:size=320x240:rate=25" $(tone 5 440) \
  -c:v libx264 -preset medium -g 25 -keyint_min 25 -sc_threshold 0 -b:v 300k \
  -x264-params threads=1:lookahead-threads=1 -pix_fmt yuv420p \
  -c:a aac -b:a 64k -ac 2 "${out_flags[@]/500/1000}" "$samples/sample.mkv"

for f in "$media"/*.mkv "$samples/sample.mkv"; do
  probe "$f"
done
ls -l "$media" "$samples"
