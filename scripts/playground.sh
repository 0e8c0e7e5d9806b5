# Builds the page that shows what paths select, build/playground; `test` tries it in a browser, `--write` renews what docs/ has of it.
# SPDX-License-Identifier: MIT
. scripts/support/sysroot.sh

# Compiles the library and the program's explanations as WebAssembly, and puts the page together.
build_page() {
    need_to_cross_build wasm32
    build wasm32 quxml-module
    rm -rf build/playground
    show node playground/assemble.mjs build/playground build/wasm32/playground/quxml-module
}

# Prints the name of each file, its bytes, and its bytes compressed.
measure() {
    local file
    for file in quxml.wasm playground.js; do
        echo "$file $(stat --format=%s "build/playground/$file") $(gzip --best --no-name --stdout "build/playground/$file" | wc --bytes)"
    done
}

# Fails if a file is 2 % larger than the table of docs/sizes.md says, compressed or not.
check_sizes() {
    local name size compressed known known_compressed
    while read -r name size compressed; do
        read -r known known_compressed < <(sed -n "s/^| \`$name\` | \([0-9]*\) | \([0-9]*\) |$/\1 \2/p" docs/sizes.md)
        echo "$name has $size bytes, compressed $compressed"
        if [ $((size * 50)) -gt $((known * 51)) ] || [ $((compressed * 50)) -gt $((known_compressed * 51)) ]; then
            fail "$name was to have $known bytes, compressed $known_compressed (docs/sizes.md)"
        fi
    done < <(measure)
}

write_sizes() {
    local name size compressed
    while read -r name size compressed; do
        sed -i "s/^| \`$name\` |.*/| \`$name\` | $size | $compressed |/" docs/sizes.md
    done < <(measure)
}

# The first pages of the repository are to be there at once.
check_picture() {
    local size
    size=$(stat --format=%s docs/pictures/playground.png)
    [ "$size" -le 102400 ] || fail "the picture has $size bytes, more than 100 KiB"
}

# Runs the tests and counts them.
try_page() {
    local status=0
    quietly node --test --test-reporter=spec tests/playground/page_test.mjs || status=$?
    # shellcheck disable=SC2034  # ./dev prints both.
    tests=$(sed -n 's/^. tests //p' build/last.log)
    # shellcheck disable=SC2034
    failed=$(sed -n 's/^. fail //p' build/last.log)
    return "$status"
}

# What drives a browser stands below build/, not in the sources; npm checks what it downloads.
need_browser() {
    need chromium fonts-dejavu-core nodejs
    command -v npm >/dev/null || need npm
    mkdir -p build/browser
    cmp --quiet tests/playground/package-lock.json build/browser/package-lock.json || {
        cp tests/playground/package.json tests/playground/package-lock.json build/browser
        quietly npm --prefix build/browser ci --no-audit --no-fund
    }
}

export PAGE=$PWD/build/playground PLAYWRIGHT=$PWD/build/browser

case ${1-} in
    '')
        build_page
        check_sizes
        ;;
    test)
        build_page
        need_browser
        try_page
        ;;
    --write)
        build_page
        need_browser
        need pngquant
        write_sizes
        show node playground/picture.mjs docs/pictures/playground.png
        show pngquant --force --strip --speed 1 --output docs/pictures/playground.png 128 docs/pictures/playground.png
        check_picture
        ;;
    *) fail "playground takes test or --write: $*" ;;
esac
