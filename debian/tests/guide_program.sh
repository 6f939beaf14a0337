# shellcheck shell=sh
# guide_program LANGUAGE NAME writes the guide's program of that language and what the guide says that it prints.
guide=${GUIDE:-docs/host-guide.md}

guide_program() {
    sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/{/^\`\`\`/d;p}" "$guide" >"$2"
    sed -n "/^\`\`\`$1\$/,\$p" "$guide" | sed -n '/^```$/,$p' | sed -n '3,/^```$/{/^```/d;p}' >"$2.shown"
}
