#!/bin/sh
# Stands in for make.exe where make is a program of the system.

# What an outer make left in the environment would change this one.
unset MAKEFLAGS MFLAGS MAKELEVEL MAKEFILES MAKEOVERRIDES GNUMAKEFLAGS

LC_ALL=C
export LC_ALL

# make strips blanks around a value before the makefile can see them.
for argument in "$@"; do
	case $argument in
	TARGET_NAME=*[!A-Za-z0-9_-]*)
		echo "make.exe: TARGET_NAME may hold only letters, digits, '_' and '-'" >&2
		exit 2
		;;
	esac
done

exec make "$@"
