#!/usr/bin/env bash
# Runs commands on a Debian 12 with only git, make, sudo and ca-certificates, like a new user's.
# usage: tests/fresh_machine.sh USER COMMAND [USER COMMAND ...]
#   USER     root, or any other name: an ordinary user of that name with sudo
#   COMMAND  one argument for the shell, run in the user's clone of this commit
# Each pair gets a new system, made by mmdebstrap from this machine's package sources, in its own namespaces; all systems share the
# downloaded packages. Everything is removed afterwards. Stops at the first command that fails, with its exit status.
set -euo pipefail
[ $# -ge 2 ] && [ $(($# % 2)) = 0 ] || { sed -n '2,7s/^# //p' "$0" >&2; exit 2; }
[ "$(id -u)" = 0 ] || exec sudo ${CI:+"CI=$CI"} "$0" "$@"
repository=$(cd "$(dirname "$0")/.." && pwd)

child= base=$(mktemp -d -p /var/tmp tandem-trim-fresh.XXXXXX)
finish() {
  # Killing the first process of the namespaces kills all others, and its parent ends once they are gone.
  if [ -n "$child" ]; then
    kill -KILL $(cat "/proc/$child/task/$child/children") || kill -KILL "$child"
    wait "$child"
  fi 2>/dev/null || true
  rm -rf --one-file-system "$base"
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# attempt COMMAND ...: runs a command in its own namespaces. A signal to this script ends it at once, with all its processes.
attempt() {
  setpriv --pdeathsig KILL env --default-signal=INT,QUIT \
    unshare --mount --mount-proc --pid --ipc --uts --fork --kill-child "$@" </dev/null &
  child=$!
  local status=0
  wait "$child" || status=$?
  child=
  return $status
}

bare=$base/bare
sources=$(find /etc/apt/ -maxdepth 2 -type f -size +0 -regextype egrep -regex '.*/sources.list(.d/.*[.](list|sources))?')
apt-config dump Acquire >"$base/apt.conf"
# shellcheck disable=SC2086 # each source is an argument
attempt mmdebstrap --quiet --mode=root --variant=minbase --include=git,make,sudo,ca-certificates --aptopt="$base/apt.conf" \
  --dpkgopt=force-unsafe-io bookworm "$bare" $sources
cp -aL /etc/resolv.conf /etc/hosts "$bare/etc"
for keys in /etc/apt/keyrings /etc/apt/auth.conf.d /usr/share/keyrings; do
  [ ! -d $keys ] || cp -aL $keys/. "$bare$keys"
done
# The developer's folder may belong to another user. A clone without hard links to it can be given to any user.
printf '[safe]\n\tdirectory = *\n' >"$base/gitconfig"
GIT_CONFIG_GLOBAL=$base/gitconfig git -c advice.detachedHead=false clone --quiet --no-hardlinks "$repository" "$base/clone"
mkdir "$base/archives"

export root=$base/root archives=$base/archives user command home
while [ $# -gt 0 ]; do
  user=$1 command=$2
  shift 2
  echo "On a bare Debian 12, as $user: $command"
  rm -rf --one-file-system "$root"
  cp -a "$bare" "$root"
  home=/root
  if [ "$user" != root ]; then
    home=/home/$user
    chroot "$root" useradd --create-home --shell /bin/bash "$user"
    echo "$user ALL=(ALL) NOPASSWD:ALL" >"$root/etc/sudoers.d/$user"
  fi
  cp -a "$base/clone" "$root$home/tandem-trim"
  chroot "$root" chown -R "$user:" "$home/tandem-trim"
  # shellcheck disable=SC2016 # expanded inside
  attempt bash -euc '
    mount --bind "$root" "$root"
    mount --rbind /dev "$root/dev"
    mount --make-rslave "$root/dev"
    mount -t tmpfs tmpfs "$root/dev/shm"
    mount -t proc proc "$root/proc"
    mount -t tmpfs tmpfs "$root/run"
    mount --bind "$archives" "$root/var/cache/apt/archives"
    exec chroot --userspec="$user" "$root" /usr/bin/env -i --chdir="$home/tandem-trim" HOME="$home" USER="$user" LOGNAME="$user" \
      TERM=dumb ${CI:+CI="$CI"} PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin bash -ec "$command"'
done
