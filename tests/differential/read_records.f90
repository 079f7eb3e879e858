! Performs read statements with the Fortran runtime, so that the import's own record reading can be
! compared with it value by value.
!
!   read_records_fortran CASES RESULTS SCRATCH
!
! CASES holds, per case and without any line structure: the number of the statement (32 bits), the
! length of the text (32 bits) and the text. The number 0 ends it. SCRATCH is written anew for each
! case. RESULTS gets one line per case: "ok", "bad" or "end"; the integers; the bits of the reals;
! the bytes of the texts; and the line that the next statement reads ("-" when the first failed).
program read_records
  use, intrinsic :: iso_fortran_env, only: int32, real32, iostat_end
  implicit none

  character(len=*), parameter :: hex_digits = '0123456789ABCDEF'
  integer(int32), parameter :: untouched_integer = -777777
  integer(int32), parameter :: untouched_real = int(z'4D123456', int32)

  character(len=1024) :: cases_path, results_path, scratch_path
  character(len=:), allocatable :: text
  character(len=8192) :: line
  integer(int32) :: statement, length
  integer :: cases, results, scratch, used, status

  integer(int32) :: i(20)
  real(real32) :: x(20)
  character(len=512) :: t, t2
  character(len=40) :: next_line
  integer :: integers, reals, width, width2

  call get_command_argument(1, cases_path)
  call get_command_argument(2, results_path)
  call get_command_argument(3, scratch_path)
  open (newunit=cases, file=trim(cases_path), access='stream', form='unformatted', status='old', &
        action='read')
  open (newunit=results, file=trim(results_path), form='formatted', status='replace')
  do
    read (cases) statement
    if (statement == 0) exit
    read (cases) length
    if (allocated(text)) deallocate (text)
    allocate (character(len=length) :: text)
    read (cases) text
    open (newunit=scratch, file=trim(scratch_path), access='stream', form='unformatted', &
          status='replace', action='write')
    write (scratch) text
    close (scratch)
    open (newunit=scratch, file=trim(scratch_path), access='sequential', form='formatted', &
          status='old')
    call perform()
    close (scratch)
  end do
  close (results)

contains

  subroutine perform()
    integer :: k

    i = untouched_integer
    x = transfer(untouched_real, x(1))
    t = repeat('~', len(t))
    t2 = t
    call expect(0, 0, 0, 0)
    select case (statement)
    case (1);  call expect(1, 0, 0, 0);  read (scratch, *, iostat=status) i(1)
    case (2);  call expect(0, 1, 0, 0);  read (scratch, *, iostat=status) x(1)
    case (3);  call expect(2, 0, 0, 0);  read (scratch, *, iostat=status) i(1), i(2)
    case (4);  call expect(0, 2, 0, 0);  read (scratch, *, iostat=status) x(1), x(2)
    case (5);  call expect(2, 2, 0, 0);  read (scratch, *, iostat=status) i(1), i(2), x(1), x(2)
    case (6);  call expect(1, 0, 40, 0); read (scratch, *, iostat=status) i(1), t(1:40)
    case (7);  call expect(0, 0, 80, 0); read (scratch, *, iostat=status) t(1:80)
    case (8);  call expect(2, 10, 0, 0); read (scratch, *, iostat=status) i(1), i(2), x(1:10)
    case (9);  call expect(1, 0, 12, 6); read (scratch, *, iostat=status) t(1:12), t2(1:6), i(1)
    case (10); call expect(5, 0, 0, 0);  read (scratch, *, iostat=status) i(1:12)
    case (11); call expect(0, 0, 0, 0);  read (scratch, *, iostat=status)
    case (12); call expect(1, 1, 8, 0);  read (scratch, *, iostat=status) i(1), x(1), t(1:8)
    case (13); call expect(1, 0, 40, 0); read (scratch, *, iostat=status) t(1:40), i(1)
    case (14); call expect(1, 0, 512, 0); read (scratch, *, iostat=status) t(1:512), i(1)
    case (21); call expect(2, 0, 0, 0);  read (scratch, '(I5,5X,I2)', iostat=status) i(1), i(2)
    case (22); call expect(4, 16, 0, 0)
      read (scratch, '(4(I5),16(F15.5))', iostat=status) i(1:4), x(1:16)
    case (23); call expect(0, 2, 0, 0);  read (scratch, '(2(F10.0))', iostat=status) x(1), x(2)
    case (24); call expect(2, 1, 0, 0)
      read (scratch, '(7X,I5,11X,I3,8X,F10.0)', iostat=status) i(1), i(2), x(1)
    case (25); call expect(0, 0, 40, 0); read (scratch, '(A40)', iostat=status) t(1:40)
    case (26); call expect(1, 0, 40, 0)
      read (scratch, '(I5,5X,A40)', iostat=status) i(1), t(1:40)
    case (27); call expect(0, 0, 512, 0); read (scratch, '(A512)', iostat=status) t(1:512)
    case (28); call expect(0, 1, 0, 0);  read (scratch, '(F10.4)', iostat=status) x(1)
    case (29); call expect(0, 1, 0, 0);  read (scratch, '(F20.9)', iostat=status) x(1)
    case (30); call expect(0, 2, 0, 0);  read (scratch, '(2(F15.5))', iostat=status) x(1), x(2)
    case (31); call expect(1, 0, 0, 0);  read (scratch, '(I12)', iostat=status) i(1)
    case (32); call expect(0, 0, 5, 30)
      read (scratch, '(A5,5X,A30)', iostat=status) t(1:5), t2(1:30)
    case (33); call expect(2, 1, 0, 0)
      read (scratch, '(7X,I5,11X,I5,18X,F10.0)', iostat=status) i(1), i(2), x(1)
    case (34); call expect(0, 1, 0, 0);  read (scratch, '(F40.3)', iostat=status) x(1)
    case (35); call expect(2, 1, 0, 0)
      read (scratch, '(I1,F3.2,I2)', iostat=status) i(1), x(1), i(2)
    case (36); call expect(0, 1, 0, 0);  read (scratch, '(F200.0)', iostat=status) x(1)
    case default; error stop 'no such statement'
    end select

    used = 0
    if (status == 0) then
      call show('ok')
    else if (status == iostat_end) then
      call show('end')
    else
      call show('bad')
    end if
    do k = 1, integers
      call show_integer(i(k))
    end do
    do k = 1, reals
      call show_bits(transfer(x(k), 0_int32))
    end do
    if (width > 0) call show_text(t(1:width))
    if (width2 > 0) call show_text(t2(1:width2))
    if (status /= 0) then
      call show('-')
    else
      read (scratch, '(A40)', iostat=status) next_line
      if (status == 0) then
        call show_text(next_line)
      else
        call show(merge('end', 'bad', status == iostat_end))
      end if
    end if
    write (results, '(A)') line(2:used)
  end subroutine perform

  subroutine expect(integer_count, real_count, text_width, second_text_width)
    integer, intent(in) :: integer_count, real_count, text_width, second_text_width
    integers = integer_count
    reals = real_count
    width = text_width
    width2 = second_text_width
  end subroutine expect

  subroutine show(word)
    character(len=*), intent(in) :: word
    line(used + 1:used + 1) = ' '
    line(used + 2:used + 1 + len(word)) = word
    used = used + 1 + len(word)
  end subroutine show

  subroutine show_integer(value)
    integer(int32), intent(in) :: value
    character(len=12) :: digits
    write (digits, '(I0)') value
    call show(trim(digits))
  end subroutine show_integer

  subroutine show_bits(bits)
    integer(int32), intent(in) :: bits
    character(len=8) :: digits
    write (digits, '(Z8.8)') bits
    call show(digits)
  end subroutine show_bits

  ! Blanks at the end are left out: they are most of it.
  subroutine show_text(value)
    character(len=*), intent(in) :: value
    integer :: k, byte
    call show('"')
    do k = 1, len_trim(value)
      byte = ichar(value(k:k))
      line(used + 1:used + 1) = hex_digits(byte/16 + 1:byte/16 + 1)
      line(used + 2:used + 2) = hex_digits(mod(byte, 16) + 1:mod(byte, 16) + 1)
      used = used + 2
    end do
  end subroutine show_text

end program read_records
