# shellcheck shell=bash
# Sourced by the scripts that print pages.

# The Debian packages that printing pages takes: Pillow with kerning, and the fonts of sheet.py.
# shellcheck disable=SC2034
printing_packages=(
    python3 python3-pil python3-numpy libraqm0
    fonts-texgyre fonts-ebgaramond fonts-lato fonts-liberation2
)
