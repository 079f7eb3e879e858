! Reads a file of records with the Fortran runtime and adds up what it read.
module fortran_reads
  use, intrinsic :: iso_c_binding, only: c_char, c_double, c_float, c_int32_t
  implicit none
  private
  public :: read_with_fortran

contains

  ! Reads `count` records of `shape` (numbered as in record_data.h) from the file at `path`. Returns 0, or the status
  ! of the read that failed. Values are added in the order in which they stand in the file.
  function read_with_fortran(path, path_length, shape, count, total) result(status) bind(C)
    integer(c_int32_t), value :: path_length, shape, count
    character(kind=c_char), intent(in) :: path(path_length)
    real(c_double), intent(out) :: total
    integer(c_int32_t) :: status

    character(len=path_length) :: name
    integer :: unit, record, k
    integer(c_int32_t) :: i(4)
    real(c_float) :: a, b, x(16)

    total = 0
    do k = 1, path_length
      name(k:k) = path(k)
    end do
    open (newunit=unit, file=name, access='sequential', form='formatted', status='old', &
          action='read', iostat=status)
    if (status /= 0) return

    select case (shape)
    case (0) ! two reals, free-form
      do record = 1, count
        read (unit, *, iostat=status) a, b
        if (status /= 0) exit
        total = total + a
        total = total + b
      end do
    case (1) ! three integers, free-form
      do record = 1, count
        read (unit, *, iostat=status) i(1), i(2), i(3)
        if (status /= 0) exit
        call add(total, i(1:3), x(1:0))
      end do
    case (2) ! three integers and ten reals, free-form
      do record = 1, count
        read (unit, *, iostat=status) i(1:3), x(1:10)
        if (status /= 0) exit
        call add(total, i(1:3), x(1:10))
      end do
    case (3)
      do record = 1, count
        read (unit, '(4(I5),16(F15.5))', iostat=status) i(1:4), x(1:16)
        if (status /= 0) exit
        call add(total, i(1:4), x(1:16))
      end do
    case (4)
      do record = 1, count
        read (unit, '(7X,I5,11X,I5,18X,F10.0)', iostat=status) i(1), i(2), x(1)
        if (status /= 0) exit
        call add(total, i(1:2), x(1:1))
      end do
    case (5)
      do record = 1, count
        read (unit, '(2(F10.0))', iostat=status) a, b
        if (status /= 0) exit
        total = total + a
        total = total + b
      end do
    case default
      status = -1
    end select
    close (unit)
  end function read_with_fortran

  pure subroutine add(total, integers, reals)
    real(c_double), intent(inout) :: total
    integer(c_int32_t), intent(in) :: integers(:)
    real(c_float), intent(in) :: reals(:)
    integer :: k

    do k = 1, size(integers)
      total = total + integers(k)
    end do
    do k = 1, size(reals)
      total = total + reals(k)
    end do
  end subroutine add

end module fortran_reads
