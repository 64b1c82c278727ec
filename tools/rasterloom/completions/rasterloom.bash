# Completion of rasterloom for bash.

_rasterloom() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local saving="--quality --progressive --no-chroma-subsampling --restart-interval --interlaced --compression-level
        --png-filter --rle"
    local profiles="--profile-in --profile-out --profile-proof --intent --bpc"
    local files="--help --force --jobs --to --strip --auto-orient --background --interpolation $profiles $saving"
    local operations="--resize --crop --rotate-flip --rotate --pixel-format"
    local palettes="--palette --palette-size --quantizer --dither --alpha-threshold"
    local options="" values="" files_too=""
    COMPREPLY=()

    case ${COMP_WORDS[1]} in
        info) options="--help --metadata --json" ;;
        convert) options="$files $operations $palettes" ;;
        thumbnail) options="$files --size --fast" ;;
        formats) options="--help" ;;
    esac
    if [ "$COMP_CWORD" -eq 1 ]; then
        COMPREPLY=($(compgen -W "info convert thumbnail formats --help --version" -- "$current"))
        return
    fi

    case $previous in
        --interpolation)
            values="NearestNeighbour Anisotropic4 Anisotropic9 Lanczos3Filter"
            if [ "${COMP_WORDS[1]}" = convert ]; then
                values="$(_rasterloom_values convert --interpolation)"
            fi
            ;;
        --rotate-flip | --pixel-format | --png-filter) values="$(_rasterloom_values convert "$previous")" ;;
        --dither) values="$(_rasterloom_values convert --dither)" ;;
        --palette) values="adaptive websafe windows mac gray bicolor" files_too=yes ;;
        --quantizer) values="median-cut octree" ;;
        --intent) values="perceptual relative saturation absolute" ;;
        --profile-in | --profile-out | --profile-proof) values="srgb" files_too=yes ;;
        --to) values="$("${COMP_WORDS[0]}" formats 2>/dev/null | awk '$3 == "yes" { gsub(/\*\.|;.*/, "", $4); print $4 }')" ;;
        --jobs | --background | --size | --resize | --crop | --rotate | --palette-size | --alpha-threshold | --quality | \
            --restart-interval | --compression-level) return ;;
        *)
            if [[ $current == -* ]]; then
                COMPREPLY=($(compgen -W "$options" -- "$current"))
            else
                compopt -o filenames
                COMPREPLY=($(compgen -f -- "$current"))
            fi
            return
            ;;
    esac
    COMPREPLY=($(compgen -W "$values" -- "$current"))
    if [ -n "$files_too" ]; then
        compopt -o filenames
        COMPREPLY+=($(compgen -f -- "$current"))
    fi
}

# The values of an option, as the program itself lists them when it is given none of them.
_rasterloom_values() {
    "${COMP_WORDS[0]}" "$1" "$2" '?' a b 2>&1 >/dev/null | sed -n "s/.*is none of \([^.]*\).*/\1/p" | tr ',' '\n' |
        grep -o '^ *[A-Za-z0-9]*$' | tr -d ' '
}

complete -F _rasterloom rasterloom
