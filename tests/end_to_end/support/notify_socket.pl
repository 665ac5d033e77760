#!/usr/bin/perl
# The socket of a service manager: prints each datagram that comes, its lines separated by TABs.
#   notify_socket.pl ADDRESS    a path, or with @ in front an abstract address
use strict;
use warnings;
use Socket;

my ($address) = @ARGV;
$address =~ s/^@/\0/;
socket(my $socket, AF_UNIX, SOCK_DGRAM, 0) or die "socket: $!";
# Perl's own addresses end with a zero byte, which an abstract one must not.
my $name = pack('S', AF_UNIX) . $address;
bind($socket, $name) or die "bind: $!";
$| = 1;
print "listening\n";
while (defined recv($socket, my $datagram, 65536, 0)) {
  chomp $datagram;
  print join("\t", split(/\n/, $datagram)), "\n";
}
