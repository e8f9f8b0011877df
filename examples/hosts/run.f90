! Runs a plant in mode 1 and prints its natural frequencies.
! usage: run INPUT_DIRECTORY INPUT_NAME RESULT_DIRECTORY
program run
  use iso_c_binding, only: c_double, c_int32_t
  implicit none
  interface
    subroutine solver(dir, ndir, name, nname, res, nres, status, mode) bind(c, name='VERENWICKSOLVER')
      import :: c_int32_t
      integer(c_int32_t), intent(in) :: dir(*), ndir, name(*), nname, res(*), nres, mode
      integer(c_int32_t), intent(out) :: status
    end subroutine
  end interface
  ! VERENWICK_MODE_FREE and VERENWICK_TEXT_LENGTH of verenwick.h.
  integer(c_int32_t), parameter :: free = 1, longest = 1000
  integer(c_int32_t) :: text(longest, 3), length(3), status
  character(longest) :: argument
  real(c_double) :: omega
  integer :: i, unit, failed
  if (command_argument_count() /= 3) stop 2
  do i = 1, 3
    call get_command_argument(i, argument)
    length(i) = len_trim(argument)
    text(:, i) = characters(argument)
  end do
  call solver(text(:, 1), length(1), text(:, 2), length(2), text(:, 3), length(3), status, free)
  if (status /= 1) stop 1
  open (newunit=unit, file=trim(argument)//'/NaturalFrequency.bin', access='direct', recl=8, &
        form='unformatted', status='old')
  i = 1
  do
    read (unit, rec=i, iostat=failed) omega
    if (failed /= 0) exit
    print '(a, i0, a, f0.2, a)', 'mode ', i, ': ', omega*30.0d0/3.141592653589793d0, ' 1/min'
    i = i + 1
  end do
contains
  ! Text crosses as one integer a character.
  pure function characters(line) result(codes)
    character(*), intent(in) :: line
    integer(c_int32_t) :: codes(len(line))
    integer :: k
    do k = 1, len(line)
      codes(k) = iachar(line(k:k))
    end do
  end function
end program
