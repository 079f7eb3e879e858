! The host commands as a Fortran program sends them. A keyword or literal comes with its NUL.
module fortran_host
  use, intrinsic :: iso_c_binding, only: c_char, c_float, c_int32_t, c_null_char, c_size_t
  implicit none
  private
  public :: put, put_i, put_r, put_ii, put_ir, put_iii, put_iir, put_iiii, put_iiir, put_iiirr
  public :: put_text, put_html, put_field, put_function_field, put_name, put_system_name
  public :: put_series, ask, ask_for_file, format_integer, format_real
  public :: nul

  character(len=1), parameter :: nul = c_null_char
  integer(c_size_t), parameter :: none = 0

  interface
    subroutine host_call_0(keyword, length) bind(C)
      import :: c_char, c_size_t
      character(kind=c_char), intent(in) :: keyword(*)
      integer(c_size_t), value :: length
    end subroutine host_call_0

    subroutine host_call_1(keyword, a, length, length_1) bind(C)
      import :: c_char, c_size_t
      character(kind=c_char), intent(in) :: keyword(*)
      !GCC$ ATTRIBUTES NO_ARG_CHECK :: a
      type(*) :: a(*)
      integer(c_size_t), value :: length, length_1
    end subroutine host_call_1

    subroutine host_call_2(keyword, a, b, length, length_1, length_2) bind(C)
      import :: c_char, c_size_t
      character(kind=c_char), intent(in) :: keyword(*)
      !GCC$ ATTRIBUTES NO_ARG_CHECK :: a, b
      type(*) :: a(*), b(*)
      integer(c_size_t), value :: length, length_1, length_2
    end subroutine host_call_2

    subroutine host_call_3(keyword, a, b, c, length, length_1, length_2, length_3) bind(C)
      import :: c_char, c_size_t
      character(kind=c_char), intent(in) :: keyword(*)
      !GCC$ ATTRIBUTES NO_ARG_CHECK :: a, b, c
      type(*) :: a(*), b(*), c(*)
      integer(c_size_t), value :: length, length_1, length_2, length_3
    end subroutine host_call_3

    subroutine host_call_4(keyword, a, b, c, d, length, length_1, length_2, length_3, length_4) bind(C)
      import :: c_char, c_size_t
      character(kind=c_char), intent(in) :: keyword(*)
      !GCC$ ATTRIBUTES NO_ARG_CHECK :: a, b, c, d
      type(*) :: a(*), b(*), c(*), d(*)
      integer(c_size_t), value :: length, length_1, length_2, length_3, length_4
    end subroutine host_call_4

    subroutine host_call_5(keyword, a, b, c, d, e, length, length_1, length_2, length_3, length_4, &
                           length_5) bind(C)
      import :: c_char, c_size_t
      character(kind=c_char), intent(in) :: keyword(*)
      !GCC$ ATTRIBUTES NO_ARG_CHECK :: a, b, c, d, e
      type(*) :: a(*), b(*), c(*), d(*), e(*)
      integer(c_size_t), value :: length, length_1, length_2, length_3, length_4, length_5
    end subroutine host_call_5
  end interface

contains

  subroutine put(keyword)
    character(len=*), intent(in) :: keyword
    call host_call_0(keyword, len(keyword, c_size_t))
  end subroutine put

  subroutine put_i(keyword, i)
    character(len=*), intent(in) :: keyword
    integer(c_int32_t), value :: i
    call host_call_1(keyword, i, len(keyword, c_size_t), none)
  end subroutine put_i

  subroutine put_r(keyword, x)
    character(len=*), intent(in) :: keyword
    real(c_float), value :: x
    call host_call_1(keyword, x, len(keyword, c_size_t), none)
  end subroutine put_r

  subroutine put_ii(keyword, i, j)
    character(len=*), intent(in) :: keyword
    integer(c_int32_t), value :: i, j
    call host_call_2(keyword, i, j, len(keyword, c_size_t), none, none)
  end subroutine put_ii

  subroutine put_ir(keyword, i, x)
    character(len=*), intent(in) :: keyword
    integer(c_int32_t), value :: i
    real(c_float), value :: x
    call host_call_2(keyword, i, x, len(keyword, c_size_t), none, none)
  end subroutine put_ir

  subroutine put_iii(keyword, i, j, k)
    character(len=*), intent(in) :: keyword
    integer(c_int32_t), value :: i, j, k
    call host_call_3(keyword, i, j, k, len(keyword, c_size_t), none, none, none)
  end subroutine put_iii

  subroutine put_iir(keyword, i, j, x)
    character(len=*), intent(in) :: keyword
    integer(c_int32_t), value :: i, j
    real(c_float), value :: x
    call host_call_3(keyword, i, j, x, len(keyword, c_size_t), none, none, none)
  end subroutine put_iir

  subroutine put_iiii(keyword, i, j, k, l)
    character(len=*), intent(in) :: keyword
    integer(c_int32_t), value :: i, j, k, l
    call host_call_4(keyword, i, j, k, l, len(keyword, c_size_t), none, none, none, none)
  end subroutine put_iiii

  subroutine put_iiir(keyword, i, j, k, x)
    character(len=*), intent(in) :: keyword
    integer(c_int32_t), value :: i, j, k
    real(c_float), value :: x
    call host_call_4(keyword, i, j, k, x, len(keyword, c_size_t), none, none, none, none)
  end subroutine put_iiir

  subroutine put_iiirr(keyword, i, j, k, x, y)
    character(len=*), intent(in) :: keyword
    integer(c_int32_t), value :: i, j, k
    real(c_float), value :: x, y
    call host_call_5(keyword, i, j, k, x, y, len(keyword, c_size_t), none, none, none, none, none)
  end subroutine put_iiirr

  ! One text.
  subroutine put_text(keyword, text)
    character(len=*), intent(in) :: keyword, text
    call host_call_1(keyword, text, len(keyword, c_size_t), len(text, c_size_t))
  end subroutine put_text

  ! A fragment for the information pane.
  subroutine put_html(text)
    character(len=*), intent(in) :: text
    call put_text('PINFOHTML'//nul, text)
  end subroutine put_html

  ! A text that belongs to one number.
  subroutine put_field(keyword, i, text)
    character(len=*), intent(in) :: keyword, text
    integer(c_int32_t), value :: i
    call host_call_2(keyword, i, text, len(keyword, c_size_t), len(text, c_size_t), none)
  end subroutine put_field

  ! A text that belongs to two numbers.
  subroutine put_function_field(keyword, i, j, text)
    character(len=*), intent(in) :: keyword, text
    integer(c_int32_t), value :: i, j
    call host_call_3(keyword, i, j, text, len(keyword, c_size_t), len(text, c_size_t), none, none)
  end subroutine put_function_field

  subroutine put_name(i, name)
    integer(c_int32_t), value :: i
    character(len=40), intent(in) :: name
    call put_field('PSEGNAME'//nul, i, name)
  end subroutine put_name

  subroutine put_system_name(i, long_name, short_name)
    integer(c_int32_t), value :: i
    character(len=*), intent(in) :: long_name, short_name
    call host_call_3('PSYSNAME'//nul, i, long_name, short_name, 9_c_size_t, len(long_name, c_size_t), &
                     len(short_name, c_size_t), none)
  end subroutine put_system_name

  ! A whole series.
  subroutine put_series(keyword, i, j, values, times)
    character(len=*), intent(in) :: keyword
    integer(c_int32_t), value :: i, j
    real(c_float), intent(inout) :: values(*), times(*)
    call host_call_4(keyword, i, j, values, times, len(keyword, c_size_t), none, none, none, none)
  end subroutine put_series

  ! Asks a question with two buttons; -1 is no answer.
  function ask(title, question, first, second) result(answer)
    character(len=*), intent(in) :: title, question, first, second
    integer(c_int32_t) :: answer
    answer = -1
    call host_call_5('PDIALOG'//nul, title, question, first, second, answer, 8_c_size_t, &
                     len(title, c_size_t), len(question, c_size_t), len(first, c_size_t), &
                     len(second, c_size_t), none)
  end function ask

  subroutine ask_for_file(name)
    character(len=512), intent(inout) :: name
    call host_call_1('GFILENAME'//nul, name, 10_c_size_t, 512_c_size_t)
  end subroutine ask_for_file

  subroutine format_integer(text, format, i)
    character(len=*), intent(inout) :: text
    character(len=*), intent(in) :: format
    integer(c_int32_t), value :: i
    call host_call_3('GSPRINTFI'//nul, text, format, i, 10_c_size_t, len(text, c_size_t), &
                     len(format, c_size_t), none)
  end subroutine format_integer

  subroutine format_real(text, format, x)
    character(len=*), intent(inout) :: text
    character(len=*), intent(in) :: format
    real(c_float), value :: x
    call host_call_3('GSPRINTFR'//nul, text, format, x, 10_c_size_t, len(text, c_size_t), &
                     len(format, c_size_t), none)
  end subroutine format_real

end module fortran_host
