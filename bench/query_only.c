/* Connects to 127.0.0.1, sends one query, reads its answer and prints it: query_only PORT */

#include <arpa/inet.h>
#include <netinet/in.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <unistd.h>

int main(int argc, char **argv) {
  struct sockaddr_in address;
  char answer[256];
  ssize_t size = 0;
  const int peer = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  memset(&address, 0, sizeof address);
  address.sin_family = AF_INET;
  address.sin_port = htons((uint16_t)(argc > 1 ? atoi(argv[1]) : 0));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connect(peer, (struct sockaddr *)&address, sizeof address) != 0 || write(peer, "*IDN?\n", 6) != 6) return 1;
  do {
    const ssize_t got = read(peer, answer + size, sizeof answer - (size_t)size);
    if (got <= 0) return 1;
    size += got;
  } while (answer[size - 1] != '\n');
  return write(STDOUT_FILENO, answer, (size_t)size) == size ? 0 : 1;
}
