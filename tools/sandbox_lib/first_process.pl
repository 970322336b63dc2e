# Process 1 of the sandbox: starts the command, collects every process that ends
# and tells on descriptor 4 how the command ended (tools/sandbox says in which
# words). When it exits, the kernel ends whatever is left in here. A shell would
# do, could it tell death by signal 9 from exit status 137.
#
# Arguments: PATH of the command, its working folder, where the host's mounts are
# still to be seen (empty: nowhere), whether /user_data is to be kept busy, whether
# keys may be plugged in, the command.

use strict;
use warnings;
no warnings 'exec';
use Fcntl qw(F_SETFD FD_CLOEXEC O_CREAT O_EXCL O_WRONLY);
use Time::HiRes qw(clock_gettime CLOCK_REALTIME);

unlink($0);
$0 = 'sandbox';
my ($path, $folder, $old_root, $busy, $keys, @command) = @ARGV;

sub refuse { print STDERR "sandbox: @_\n"; exit 125 }

open(my $lifeline, '<&=', 3) or refuse("no lifeline: $!");
open(my $result, '>>&=', 4) or refuse("no way to report: $!");
fcntl($_, F_SETFD, FD_CLOEXEC) or refuse("no way to keep the command out: $!")
    for $lifeline, $result;

sub tell_result { syswrite($result, join('', map { "$_\n" } @_)) }
sub now { sprintf('%.0f', 1e9 * clock_gettime(CLOCK_REALTIME)) }

sub start {
    my ($body) = @_;
    my $pid = fork // refuse("cannot fork: $!");
    return $pid if $pid;
    $SIG{$_} = 'DEFAULT' for qw(INT QUIT TERM HUP);
    $body->();
    exit(0);
}

# The lifeline ends when the outer half of the sandbox wants an end, or has died.
sub watch_lifeline { sysread($lifeline, my $nothing, 1) }

sub work_in_user_data {
    chdir('/user_data') or exit(1);
    syswrite($_[0], '.');
    sleep;
}

# What is in the scratch /dev beyond the harmless nodes. Told in a file under its
# final name only when it is whole: somebody waits for it to change.
my @plugged;

sub tell_plugged {
    open(my $file, '>', '/keys/plugged.new') or return warn("sandbox: /keys: $!\n");
    print $file map { "$_\n" } @plugged;
    close($file) and rename('/keys/plugged.new', '/keys/plugged')
        or warn("sandbox: /keys/plugged: $!\n");
}

sub plug {
    my ($name) = @_;
    $name =~ /^[a-z]+[0-9]*$/ or return warn("sandbox: no name of a node: $name\n");
    sysopen(my $node, "/dev/$name", O_WRONLY | O_CREAT | O_EXCL)
        or return warn("sandbox: plug $name: $!\n");
    push @plugged, $name;
}

sub pull {
    my ($name) = @_;
    my @left = grep { $_ ne $name } @plugged;
    @left < @plugged && unlink("/dev/$name") or return warn("sandbox: pull $name: not plugged\n");
    @plugged = @left;
}

sub read_plugged {
    open(my $file, '<', '/keys/plugged') or return;
    chomp(my @names = <$file>);
    return @names;
}

# Ends only with the sandbox: the pipe is open for writing too, and never at its end.
sub keep_keys {
    my ($control) = @_;
    @plugged = read_plugged();
    while (my $line = readline($control)) {
        my ($action, @names) = split(' ', $line);
        if (($action // '') eq 'plug') { plug($_) for @names }
        elsif (($action // '') eq 'pull') { pull($_) for @names }
        else { warn("sandbox: neither plug nor pull: $line") }
        tell_plugged();
    }
}

sub run_command {
    chdir($folder) or chdir('/');
    $ENV{PWD} = $folder;
    $ENV{PATH} = $path;
    exec { $command[0] } @command
        or do { print STDERR "sandbox: $command[0]: $!\n"; exit($!{ENOENT} ? 127 : 126) };
}

# Read-only: this machine's settings and its magic keys are in there too, and even
# in a user namespace "root" may be the real one to them.
system('mount', '-t', 'proc', '-o', 'ro,nosuid,nodev,noexec', 'proc', '/proc') == 0
    or refuse('no /proc of its own');
if ($old_root) {
    system('umount', '--lazy', $old_root) == 0 && rmdir($old_root)
        or refuse('the mounts of the host cannot be left behind');
}

if ($busy) {
    pipe(my $ready, my $tell) or refuse("no pipe: $!");
    start(sub { work_in_user_data($tell) });
    close($tell);
    sysread($ready, my $dot, 1) or refuse('/user_data cannot be kept busy');
}
my $keeper = 0;
my $keep_keys;
if ($keys) {
    open(my $control, '+<', '/keys/control') or refuse("no way to hear of keys: $!");
    fcntl($control, F_SETFD, FD_CLOEXEC);
    plug($_) for read_plugged();
    tell_plugged();
    $keep_keys = sub { keep_keys($control) };
    $keeper = start($keep_keys);
}
my $watcher = start(\&watch_lifeline);
tell_result('started=' . now());
my $pid = start(\&run_command);

while ((my $ended = wait) != -1) {
    my $status = $?;
    if ($ended == $pid) {
        my $signal = $status & 127;
        tell_result('ended=' . now(),
            $signal ? ('end=signal', "status=$signal") : ('end=exit', 'status=' . ($status >> 8)));
        exit 0;
    }
    # A command may well send a signal to everybody but process 1.
    $keeper = start($keep_keys) if $ended == $keeper;
    next if $ended != $watcher;
    exit 0 if !$status;
    $watcher = start(\&watch_lifeline);
}
