#!/bin/sh
# The libraries depend on libstdc++ and libc alone (and on each other).
# Usage: needed_libraries.sh LIBRARY...
status=0
for library in "$@"; do
    for needed in $(readelf -d "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p'); do
        case $needed in
        libstdc++.so.* | libgcc_s.so.* | libc.so.* | libm.so.* | ld-linux-x86-64.so.* | libcommon.so.*) ;;
        *)
            echo "$library needs $needed"
            status=1
            ;;
        esac
    done
done
[ $status -eq 0 ] && echo "nothing but libstdc++ and libc"
exit $status
