// From Apple's open-source Libc (include/_stdio.h, include/stdio.h). A stream's inside is nobody's business.
#pragma once

#include <stdarg.h>
#include <stddef.h>
#include <sys/types.h>

#define EOF (-1)
#define BUFSIZ 1024
#define FILENAME_MAX 1024
#define FOPEN_MAX 20
#define L_tmpnam 1024
#define TMP_MAX 308915776
#define SEEK_SET 0
#define SEEK_CUR 1
#define SEEK_END 2
#define _IOFBF 0
#define _IOLBF 1
#define _IONBF 2

typedef struct __sFILE FILE;
typedef off_t fpos_t;

__BEGIN_DECLS
extern FILE* __stdinp;
extern FILE* __stdoutp;
extern FILE* __stderrp;

#define stdin __stdinp
#define stdout __stdoutp
#define stderr __stderrp

FILE* fopen(const char* __restrict, const char* __restrict);
FILE* fdopen(int, const char*);
FILE* freopen(const char* __restrict, const char* __restrict, FILE* __restrict);
FILE* tmpfile(void);
FILE* popen(const char*, const char*);
int pclose(FILE*);
int fclose(FILE*);
int fflush(FILE*);
int fileno(FILE*);
void setbuf(FILE* __restrict, char* __restrict);
int setvbuf(FILE* __restrict, char* __restrict, int, size_t);
char* tmpnam(char*);
int remove(const char*);
int rename(const char*, const char*);

int printf(const char* __restrict, ...) __printflike(1, 2);
int fprintf(FILE* __restrict, const char* __restrict, ...) __printflike(2, 3);
int sprintf(char* __restrict, const char* __restrict, ...) __printflike(2, 3);
int snprintf(char* __restrict, size_t, const char* __restrict, ...) __printflike(3, 4);
int asprintf(char** __restrict, const char* __restrict, ...) __printflike(2, 3);
int dprintf(int, const char* __restrict, ...) __printflike(2, 3);
int vprintf(const char* __restrict, va_list) __printflike(1, 0);
int vfprintf(FILE* __restrict, const char* __restrict, va_list) __printflike(2, 0);
int vsprintf(char* __restrict, const char* __restrict, va_list) __printflike(2, 0);
int vsnprintf(char* __restrict, size_t, const char* __restrict, va_list) __printflike(3, 0);
int vasprintf(char** __restrict, const char* __restrict, va_list) __printflike(2, 0);
int scanf(const char* __restrict, ...);
int fscanf(FILE* __restrict, const char* __restrict, ...);
int sscanf(const char* __restrict, const char* __restrict, ...);
int vscanf(const char* __restrict, va_list);
int vfscanf(FILE* __restrict, const char* __restrict, va_list);
int vsscanf(const char* __restrict, const char* __restrict, va_list);

int fgetc(FILE*);
int getc(FILE*);
int getchar(void);
int ungetc(int, FILE*);
int fputc(int, FILE*);
int putc(int, FILE*);
int putchar(int);
int puts(const char*);
int fputs(const char* __restrict, FILE* __restrict);
char* fgets(char* __restrict, int, FILE*);
ssize_t getline(char** __restrict, size_t* __restrict, FILE* __restrict);
size_t fread(void* __restrict, size_t, size_t, FILE* __restrict);
size_t fwrite(const void* __restrict, size_t, size_t, FILE* __restrict);

int fgetpos(FILE* __restrict, fpos_t*);
int fsetpos(FILE*, const fpos_t*);
int fseek(FILE*, long, int);
int fseeko(FILE*, off_t, int);
long ftell(FILE*);
off_t ftello(FILE*);
void rewind(FILE*);
void clearerr(FILE*);
int feof(FILE*);
int ferror(FILE*);
void perror(const char*);
__END_DECLS
