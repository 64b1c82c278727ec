# Completion of rasterloom for fish.

# The values of an option, as the program itself lists them when it is given none of them.
function __rasterloom_values
    rasterloom $argv[1] $argv[2] '?' a b 2>&1 >/dev/null | string match -r 'is none of ([^.]*)' | tail -n 1 |
        string split ',' | string trim | string match -r '^[A-Za-z0-9]+$'
end

function __rasterloom_on
    __fish_seen_subcommand_from $argv
end

complete -c rasterloom -n __fish_use_subcommand -f -a info -d 'Print what pictures are'
complete -c rasterloom -n __fish_use_subcommand -f -a convert -d 'Load pictures, change them, save them'
complete -c rasterloom -n __fish_use_subcommand -f -a thumbnail -d 'Load pictures reduced to fit into a box'
complete -c rasterloom -n __fish_use_subcommand -f -a formats -d 'List the file formats'
complete -c rasterloom -s h -l help -d 'Print help'
complete -c rasterloom -n __fish_use_subcommand -l version -d 'Print the version'

complete -c rasterloom -n '__rasterloom_on info' -l metadata -d 'Every entry of the metadata as well'
complete -c rasterloom -n '__rasterloom_on info' -l json -d 'As JSON'

set -l both '__rasterloom_on convert thumbnail'
complete -c rasterloom -n $both -s f -l force -d 'Replace files that exist'
complete -c rasterloom -n $both -s j -l jobs -x -d 'Files worked on at a time'
complete -c rasterloom -n $both -l to -x -d 'Format for standard output'
complete -c rasterloom -n $both -l strip -d 'Leave metadata and profile behind'
complete -c rasterloom -n $both -l auto-orient -d 'Turn the pixels as EXIF tells'
complete -c rasterloom -n $both -l background -x -d 'Colour where there is none'
complete -c rasterloom -n '__rasterloom_on convert' -l interpolation -x -a '(__rasterloom_values convert --interpolation)'
complete -c rasterloom -n '__rasterloom_on thumbnail' -l interpolation -x \
    -a 'NearestNeighbour Anisotropic4 Anisotropic9 Lanczos3Filter'
complete -c rasterloom -n $both -l profile-in -r -a srgb -d 'Profile of the pictures'
complete -c rasterloom -n $both -l profile-out -r -a srgb -d 'Profile to convert to'
complete -c rasterloom -n $both -l profile-proof -r -a srgb -d 'Profile to simulate'
complete -c rasterloom -n $both -l intent -x -a 'perceptual relative saturation absolute'
complete -c rasterloom -n $both -l bpc -d 'Black point compensation'
complete -c rasterloom -n $both -l quality -x -d 'JPEG: 0 to 100'
complete -c rasterloom -n $both -l progressive -d 'JPEG: in scans of growing detail'
complete -c rasterloom -n $both -l no-chroma-subsampling -d 'JPEG: colour at full resolution'
complete -c rasterloom -n $both -l restart-interval -x -d 'JPEG: rows between restart markers'
complete -c rasterloom -n $both -l interlaced -d 'PNG: in passes of growing detail'
complete -c rasterloom -n $both -l compression-level -x -d 'PNG: 0 to 9'
complete -c rasterloom -n $both -l png-filter -x -a '(__rasterloom_values convert --png-filter)'
complete -c rasterloom -n $both -l rle -d 'BMP: run lengths'

complete -c rasterloom -n '__rasterloom_on thumbnail' -l size -x -d 'The box'
complete -c rasterloom -n '__rasterloom_on thumbnail' -l fast -d 'JPEG: let the decoder reduce first'

set -l convert '__rasterloom_on convert'
complete -c rasterloom -n $convert -l resize -x -d 'New size'
complete -c rasterloom -n $convert -l crop -x -d 'Left,top,width,height'
complete -c rasterloom -n $convert -l rotate-flip -x -a '(__rasterloom_values convert --rotate-flip)'
complete -c rasterloom -n $convert -l rotate -x -d 'Degrees clockwise'
complete -c rasterloom -n $convert -l pixel-format -x -a '(__rasterloom_values convert --pixel-format)'
complete -c rasterloom -n $convert -l palette -r -a 'adaptive websafe windows mac gray bicolor'
complete -c rasterloom -n $convert -l palette-size -x -d 'The most entries'
complete -c rasterloom -n $convert -l quantizer -x -a 'median-cut octree'
complete -c rasterloom -n $convert -l dither -x -a '(__rasterloom_values convert --dither)'
complete -c rasterloom -n $convert -l alpha-threshold -x -d 'Alpha below it becomes transparent'
