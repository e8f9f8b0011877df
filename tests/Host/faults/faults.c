/* Preloaded into a program, makes chosen calls of it fail as a full disk or exhausted memory does:
 * what writes to a file with ENOSPC, what allocates memory with ENOMEM. FAULTS names a file of six
 * 64-bit numbers, which the process and those that it starts share:
 *
 *   first write to fail (counted from 1; 0: none), how many in a row, writes so far,
 *   first allocation to fail, how many in a row, allocations so far.
 *
 * Writes are taken at the system call, since the C library's own streams reach it by no symbol that
 * could be replaced: a filter of the kernel turns each into a signal, whose handler makes the call
 * or fails it. Standard error is left alone. Counting begins with main. */
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

struct Plan {
  uint64_t first;
  uint64_t many;
  uint64_t count;
};

/* Null until the program has reached main. */
static struct Plan* plans;

static int fails(size_t which) {
  if (plans == NULL) {
    return 0;
  }
  struct Plan* const plan = &plans[which];
  const uint64_t number = __atomic_add_fetch(&plan->count, 1, __ATOMIC_RELAXED);
  return plan->first != 0 && number >= plan->first && number - plan->first < plan->many;
}

static int writeFails(void) { return fails(0); }

static int allocationFails(void) {
  if (!fails(1)) {
    return 0;
  }
  errno = ENOMEM;
  return 1;
}

/* NOLINTBEGIN(bugprone-reserved-identifier): names of the C library */
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* old, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
/* NOLINTEND(bugprone-reserved-identifier) */

void* malloc(size_t size) { return allocationFails() ? NULL : __libc_malloc(size); }

void* calloc(size_t count, size_t size) {
  return allocationFails() ? NULL : __libc_calloc(count, size);
}

void* realloc(void* old, size_t size) {
  return allocationFails() ? NULL : __libc_realloc(old, size);
}

void* memalign(size_t alignment, size_t size) {
  return allocationFails() ? NULL : __libc_memalign(alignment, size);
}

void* aligned_alloc(size_t alignment, size_t size) { return memalign(alignment, size); }

int posix_memalign(void** result, size_t alignment, size_t size) {
  void* const block = memalign(alignment, size);
  if (block == NULL) {
    return ENOMEM;
  }
  *result = block;
  return 0;
}

/* The last argument of a call that the filter lets through: none of these calls has a sixth. */
#define MARK 0x0FA17E57

#if defined(__x86_64__)
#define RESULT gregs[REG_RAX]
static const int kRegisters[] = {REG_RDI, REG_RSI, REG_RDX, REG_R10, REG_R8};
#define ARGUMENT(context, n) ((context)->gregs[kRegisters[n]])
#elif defined(__aarch64__)
#define RESULT regs[0]
#define ARGUMENT(context, n) ((context)->regs[n])
#else
#error "the registers of a system call are not known here"
#endif

static void onWrite(int signal, siginfo_t* info, void* context) {
  (void)signal;
  mcontext_t* const machine = &((ucontext_t*)context)->uc_mcontext;
  const long first = (long)ARGUMENT(machine, 0);
  const int call = info->si_syscall;
  const int toError = (call == SYS_write || call == SYS_writev) && first == STDERR_FILENO;
  if (!toError && writeFails()) {
    machine->RESULT = -ENOSPC;
    return;
  }
  const int before = errno;
  const long result = syscall(call, first, ARGUMENT(machine, 1), ARGUMENT(machine, 2),
                              ARGUMENT(machine, 3), ARGUMENT(machine, 4), (long)MARK);
  machine->RESULT = result == -1 ? -errno : result;
  errno = before;
}

static void stop(const char* words) {
  perror(words);
  _exit(99);
}

/* Calls that write or make room to write; an opened file is one if it is opened for writing. */
static const uint32_t kWrites[] = {
    SYS_write,     SYS_writev, SYS_pwrite64,  SYS_pwritev, SYS_sendfile, SYS_ftruncate,
    SYS_fallocate, SYS_fsync,  SYS_fdatasync, SYS_mkdirat, SYS_renameat, SYS_renameat2,
#ifdef SYS_mkdir
    SYS_mkdir,     SYS_rename,
#endif
};
enum { kWriteCalls = sizeof kWrites / sizeof *kWrites };

static void watchWrites(void) {
  struct sigaction action;
  memset(&action, 0, sizeof action);
  action.sa_sigaction = onWrite;
  action.sa_flags = SA_SIGINFO | SA_NODEFER | SA_RESTART;
  if (sigaction(SIGSYS, &action, NULL) != 0) {
    stop("faults: no handler");
  }

  enum { kAllow = kWriteCalls + 6, kTrap, kLength };
  const uint32_t call = offsetof(struct seccomp_data, nr);
  const uint32_t flags = offsetof(struct seccomp_data, args[2]);
  const uint32_t last = offsetof(struct seccomp_data, args[5]);
  struct sock_filter code[kLength];
  uint8_t n = 0;
#define LOAD(what) (struct sock_filter) BPF_STMT(BPF_LD | BPF_W | BPF_ABS, what)
#define JUMP(how, value, yes, no) \
  (struct sock_filter) BPF_JUMP(BPF_JMP | how | BPF_K, value, (uint8_t)(yes), (uint8_t)(no))
  code[n++] = LOAD(last);
  code[n] = JUMP(BPF_JEQ, MARK, kAllow - n - 1, 0), ++n;
  code[n++] = LOAD(call);
  for (size_t i = 0; i < kWriteCalls; ++i) {
    code[n] = JUMP(BPF_JEQ, kWrites[i], kTrap - n - 1, 0), ++n;
  }
  code[n] = JUMP(BPF_JEQ, SYS_openat, 0, kAllow - n - 1), ++n;
  code[n++] = LOAD(flags);
  code[n] = JUMP(BPF_JSET, O_WRONLY | O_RDWR | O_CREAT, kTrap - n - 1, kAllow - n - 1), ++n;
  code[n++] = (struct sock_filter)BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW);
  code[n++] = (struct sock_filter)BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP);
  const struct sock_fprog program = {n, code};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
      prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0) {
    stop("faults: no filter of system calls");
  }
}

static void begin(void) {
  const char* const path = getenv("FAULTS");
  const int file = path == NULL ? -1 : open(path, O_RDWR | O_CLOEXEC);
  void* const shared =
      mmap(NULL, 2 * sizeof(struct Plan), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  if (file < 0 || shared == MAP_FAILED) {
    stop("faults: no plan");
  }
  close(file);
  watchWrites();
  plans = shared;
}

typedef int Main(int, char**, char**);
typedef void Step(void);
typedef int Start(Main*, int, char**, Step*, Step*, Step*, void*);

static Main* realMain;

static int watchedMain(int count, char** words, char** environment) {
  begin();
  return realMain(count, words, environment);
}

/* What the C library calls to run a program, and with it its main.
 * NOLINTNEXTLINE(bugprone-reserved-identifier) */
int __libc_start_main(Main* theMain, int count, char** words, Step* init, Step* fini,
                      Step* loaderFini, void* stackEnd) {
  void* const symbol = dlsym(RTLD_NEXT, "__libc_start_main");
  Start* start = NULL;
  memcpy(&start, &symbol, sizeof start);
  realMain = theMain;
  return start(watchedMain, count, words, init, fini, loaderFini, stackEnd);
}
