#!/bin/sh
# First process of a process and mount namespace of its own: runs a real user manager of systemd,
# whose first words go to a file. When this process ends, everything in the namespace does.
#   user_manager.sh NAME LIST    NAME: of its control groups; LIST: file to name them in
set -u

# systemd asks this folder whether the machine runs systemd at all.
mount -t tmpfs -o mode=755 tmpfs /run && mkdir -p /run/systemd/system || exit 1

# Control groups of its own, where this user may make any: two managers at a time would otherwise
# take each other's services for their own.
while IFS=: read -r _ controllers group; do
  case $controllers in
    name=systemd) root=/sys/fs/cgroup/systemd ;;
    '') root=/sys/fs/cgroup/unified; [ -d "$root" ] || root=/sys/fs/cgroup ;;
    *) continue ;;
  esac
  folder=${root}${group%/}/$1
  if mkdir "$folder" 2>/dev/null; then
    echo "$folder" >>"$2"
    echo $$ >"$folder/cgroup.procs"
  fi
done </proc/self/cgroup

/lib/systemd/systemd --user --log-target=console &
wait
