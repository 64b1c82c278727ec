#!/usr/bin/env bash
# Makes lake.jpg from lake.bmp: the picture as a camera would hand it over, with EXIF, GPS, IPTC, XMP, a thumbnail and a
# colour profile. Needs ImageMagick, exiftool and python3. Own work, CC0.
set -euo pipefail
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
PYTHONPATH=../../tests/interop python3 -c "import sys, tool_profiles
open(sys.argv[1], 'wb').write(tool_profiles.rgb('Lake camera RGB', tool_profiles.WIDE, 1.8))" "$work/camera.icc"
PYTHONPATH=../../tests/interop python3 -c "import sys, tool_profiles
open(sys.argv[1], 'wb').write(tool_profiles.rgb('sRGB', tool_profiles.SRGB, 2.2))" "$work/srgb.icc"
convert lake.bmp -profile "$work/srgb.icc" -profile "$work/camera.icc" -quality 88 lake.jpg
convert lake.bmp -resize 160x -strip -quality 75 "$work/thumbnail.jpg"
exiftool -q -overwrite_original -n \
    -Make=Rasterloom -Model="Lake camera" -Software="make_photo.sh" -Orientation=1 \
    -ImageDescription="A lake in the evening" -Artist="The Rasterloom authors" -Copyright="CC0" \
    -DateTimeOriginal="2024:08:17 20:15:30" -CreateDate="2024:08:17 20:15:30" \
    -ExposureTime=0.008 -FNumber=8 -ISO=100 -FocalLength=35 -ColorSpace=65535 \
    -ExifImageWidth=720 -ExifImageHeight=480 \
    -GPSLatitude=46.75 -GPSLatitudeRef=N -GPSLongitude=7.7 -GPSLongitudeRef=E \
    -IPTC:Keywords=lake -IPTC:Keywords=evening -IPTC:City=Thun \
    -XMP-dc:Title="A lake in the evening" -XMP-xmp:Rating=5 \
    "-ThumbnailImage<=$work/thumbnail.jpg" lake.jpg
