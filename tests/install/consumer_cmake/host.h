/* The host, as the programs of this project know it. */
#ifndef CONSUMER_HOST_H
#define CONSUMER_HOST_H

/* The answer to the question for the import file. */
void set_import_file(const char *path);
/* Commands received so far. */
int command_count(void);

#endif
