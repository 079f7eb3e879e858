! A legacy model file, imported by a Fortran program: the same read statements and the same host commands as those of the
! library. It is written with care for speed: tables are flat arrays that grow by doubling, a read fills them in place, and no
! text is built where one can be passed. What it does not do: it tells no notices, writes no lines to standard output,
! describes no faults, and knows of the translations only the numbers that generated models have.
module fortran_import
  use, intrinsic :: iso_c_binding, only: c_char, c_float, c_int32_t
  use fortran_host
  implicit none
  private
  public :: import_legacy_model

  integer, parameter :: ik = c_int32_t, rk = c_float
  integer(ik), parameter :: system_limit = 28, buffer_size = 170000, function_limit = 50
  character(len=*), parameter :: blue = '<li><span style="font-weight: bold; color: blue;">'//nul

  ! What an import leaves for the next: the buffers, and the name of the model file.
  real(rk), save :: value_buffer(buffer_size) = 0, time_buffer(buffer_size) = 0
  character(len=512), save :: model_file_name = repeat(nul, 512)

  ! What sections hand on.
  integer, save :: unit, status
  integer(ik), save :: model_type, file_version, system_count, segment_count, field_count, flow_option
  logical, save :: with_numbers, transport_only, has_air_temperature
  real(rk), save :: simulation_length
  integer(ik), save :: variable_count, system_of_variable(system_limit)
  integer(ik), allocatable, save :: inflow_count(:)

  ! The breakpoints of all series of a section, one behind the other.
  integer, save :: breakpoints
  real(rk), allocatable, save :: first_values(:), second_values(:)

  character(len=80), save :: line

  character(len=5), parameter :: short_names(system_limit) = [character(len=5) :: &
    'NH-34', 'NO3O2', 'ORG-N', 'D-DIP', 'ORG-P', 'IN-SI', 'ORGSI', 'CBODU', 'CBODU', 'CBODU', 'DISOX', 'DET-C', &
    'DET-N', 'DET-P', 'DETSI', 'TOTDE', 'SALIN', 'MALGA', 'MALGN', 'MALGP', 'SOLID', 'SOLID', 'SOLID', 'PHYTO', &
    'PHYTO', 'PHYTO', 'PH-SU', 'ALKAL']
  character(len=30), parameter :: long_names(system_limit) = [character(len=30) :: &
    'Ammonia', 'Nitrate/Nitrite', 'Diss Org N', 'Inorganic P', 'Diss Org P', 'Inorganic Si', 'Organic Si', &
    'CBOD-1', 'CBOD-2', 'CBOD-3', 'Dissolved Oxygen', 'Detrital Carbon', 'Detrital N', 'Detrital P', &
    'Detrital Si', 'Total Detritus', 'Salinity', 'Benthic Algae', 'Benthic Algae-N', 'Benthic Algae-P', &
    'Solid 1', 'Solid 2', 'Solid 3', 'Phytoplankton 1', 'Phytoplankton 2', 'Phytoplankton 3', 'pH', 'Alkalinity']

contains

  ! Imports the file that the host names. Returns 0, or the status of the read that failed.
  function import_legacy_model() result(outcome) bind(C)
    integer(ik) :: outcome
    character(len=512) :: name

    transport_only = .false.
    has_air_temperature = .false.
    simulation_length = 0
    flow_option = 0
    if (ask('Set Verbose Option:'//nul, 'Yes or No?'//nul, 'Yes'//nul, 'No'//nul) == 0) continue
    if (ask('Import Options'//nul, 'Import Network/Transport or All ?'//nul, 'Transport Only'//nul, &
            'All'//nul) == 0) transport_only = .true.
    with_numbers = ask('Index Segment Names'//nul, 'Add Index to Segment Name to Insure Unique Name'//nul, &
                       'Yes'//nul, 'No'//nul) /= 1
    name = ' '
    call ask_for_file(name)
    call name_model_file(trim(name)//nul)
    call open_file(name)
    if (status == 0) read (unit, '(I5,5X,I2)', iostat=status) model_type, file_version
    if (status /= 0) then
      outcome = status
      return
    end if
    close (unit)
    call open_file(name)
    call send_intro()
    call section(0, read_model_parameters)
    call section(5, read_segments)
    call section(10, read_flow_paths)
    call section(20, read_flow_series)
    call section(30, read_exchanges)
    call section(40, read_boundaries)
    call section(50, read_loads)
    call section(60, read_time_functions)
    call section(70, read_segment_parameters)
    call section(80, read_constants)
    call section(85, read_initial_conditions)
    call put_i('PPROGRESS'//nul, 100_ik)
    if (ask('Continue'//nul, 'Click Okay to Continue'//nul, 'Okay'//nul, 'No'//nul) == 0) continue
    close (unit)
    call send_completion_note()
    outcome = status
  end function import_legacy_model

  subroutine section(progress, import_section)
    integer(ik), intent(in) :: progress
    interface
      subroutine import_section()
      end subroutine import_section
    end interface
    call put_i('PPROGRESS'//nul, progress)
    if (status == 0) call import_section()
  end subroutine section

  subroutine open_file(name)
    character(len=*), intent(in) :: name
    open (newunit=unit, file=trim(name), access='sequential', form='formatted', status='old', action='read', &
          iostat=status)
  end subroutine open_file

  subroutine name_model_file(name)
    character(len=*), intent(in) :: name
    integer :: point
    point = index(name, '.')
    if (point == 0) then
      model_file_name(1:511) = name
    else
      model_file_name(1:point - 1) = name(1:point - 1)
      model_file_name(point:point + 3) = '.KIF'
    end if
  end subroutine name_model_file

  ! Room for so many more breakpoints.
  subroutine reserve_breakpoints(count)
    integer(ik), intent(in) :: count
    real(rk), allocatable :: larger(:)
    integer :: wanted

    if (.not. allocated(first_values)) then
      wanted = max(4096, count)
      allocate (first_values(wanted), second_values(wanted))
      return
    end if
    if (breakpoints + count <= size(first_values)) return
    wanted = max(breakpoints + count, 2*size(first_values))
    allocate (larger(wanted))
    larger(1:breakpoints) = first_values(1:breakpoints)
    call move_alloc(larger, first_values)
    allocate (larger(wanted))
    larger(1:breakpoints) = second_values(1:breakpoints)
    call move_alloc(larger, second_values)
  end subroutine reserve_breakpoints

  subroutine read_breakpoints(count)
    integer(ik), intent(in) :: count
    integer(ik) :: i

    call reserve_breakpoints(count)
    do i = breakpoints + 1, breakpoints + count
      read (unit, *, iostat=status) first_values(i), second_values(i)
      if (status /= 0) return
    end do
    breakpoints = breakpoints + max(count, 0)
  end subroutine read_breakpoints

  subroutine release_breakpoints()
    breakpoints = 0
    if (allocated(first_values)) deallocate (first_values, second_values)
  end subroutine release_breakpoints

  subroutine grow(list, wanted)
    integer(ik), allocatable, intent(inout) :: list(:)
    integer, intent(in) :: wanted
    integer(ik), allocatable :: larger(:)

    if (.not. allocated(list)) then
      allocate (list(max(wanted, 64)))
    else if (wanted > size(list)) then
      allocate (larger(max(wanted, 2*size(list))))
      larger(1:size(list)) = list
      call move_alloc(larger, list)
    end if
  end subroutine grow

  subroutine grow_reals(list, wanted)
    real(rk), allocatable, intent(inout) :: list(:)
    integer, intent(in) :: wanted
    real(rk), allocatable :: larger(:)

    if (.not. allocated(list)) then
      allocate (list(max(wanted, 64)))
    else if (wanted > size(list)) then
      allocate (larger(max(wanted, 2*size(list))))
      larger(1:size(list)) = list
      call move_alloc(larger, list)
    end if
  end subroutine grow_reals

  subroutine grow_texts(list, wanted)
    character(len=30), allocatable, intent(inout) :: list(:)
    integer, intent(in) :: wanted
    character(len=30), allocatable :: larger(:)

    if (.not. allocated(list)) then
      allocate (list(max(wanted, 64)))
    else if (wanted > size(list)) then
      allocate (larger(max(wanted, 2*size(list))))
      larger(1:size(list)) = list
      call move_alloc(larger, list)
    end if
  end subroutine grow_texts

  ! ---- the information pane

  subroutine report(message)
    character(len=*), intent(in) :: message
    call put_html(blue)
    call put_html(message)
  end subroutine report

  subroutine page_row(text, width)
    character(len=*), intent(in) :: text
    integer, intent(in) :: width
    character(len=51) :: field
    field = text
    field(width + 1:width + 1) = nul
    call put_html(field(1:width + 1))
  end subroutine page_row

  subroutine send_intro()
    integer :: i
    character(len=*), parameter :: lines(6) = [character(len=21) :: 'Model branch: ', 'Gui sha: ', 'Gui branch: ', &
      'Platform: ', 'Architecture: ', 'Build type: ']
    call put('PCLEARINFO'//nul)
    call put_html('<center><body><table style="text-align: left; width: 332px; height: 284px;"'//nul)
    call put_html('border="1" cellpadding="2" cellspacing="2"><tbody>'//nul)
    call put_html('<tr style="font-weight: bold; color: white;"align="center">'//nul)
    call put_html('<td style="background-color: blue;">'//nul)
    call put_html('KOVA Import Utility Version Information</td></tr>'//nul)
    call put_html('<tr style="font-weight: bold;" align="Left"><td>'//nul)
    call page_row('ORVEN -- KOVA Version 8.4.3', 30)
    call put_html('</td></tr><tr style="font-weight: bold;" align="Left"><td>'//nul)
    call page_row('Model sha: ', 30)
    call put_html('</td></tr>'//nul)
    call put_html('<tr style="font-weight: bold;" align="Left"><td>'//nul)
    call page_row('Built on: ', 50)
    do i = 1, size(lines)
      call put_html('</td></tr><tr style="font-weight: bold;" align="Left"><td>'//nul)
      call page_row(lines(i), 30)
    end do
    call put_html('</td></tr></tbody></table><br></body></Center>'//nul)
  end subroutine send_intro

  subroutine send_completion_note()
    call put_html('<body><big style="font-weight: bold; color: Black;">Import Utility '//nul)
    call put_html('has completed. User should do a visible inspection between data in the KOVA7 '//nul)
    call put_html('interface &amp; KOVA8 Interface.  Because of drastic changes in the data '//nul)
    call put_html('structures, data may not be imported. If you did multiple BOD and '//nul)
    call put_html('Phytoplankton groups in KOVA7, you will need to check the "Use" Box for '//nul)
    call put_html('all constants, whether they were used in KOVA7.  '//nul)
    call put_html('If you simulated Benthic Algae in KOVA you will need to parameterize in '//nul)
    call put_html('KOVA8 without the aid of the import '//nul)
    call put_html('utility. So much has changed that it is virtually impossible '//nul)
    call put_html('to import correctly.  '//nul)
    call put_html('See '//KOVA_WEB_SITE//' under FAQ for more information about importing '//nul)
    call put_html('KOVA7 Files</big></body>'//nul)
  end subroutine send_completion_note

  subroutine integer_cell(i)
    integer(ik), intent(in) :: i
    character(len=132) :: text
    text = ' '
    call format_integer(text, '%d'//nul, i)
    call put_html(text//nul)
  end subroutine integer_cell

  subroutine real_cell(x, format)
    real(rk), intent(in) :: x
    character(len=*), intent(in) :: format
    character(len=132) :: text
    text = ' '
    call format_real(text, format, x)
    call put_html(text//nul)
  end subroutine real_cell

  subroutine row_label(label)
    character(len=*), intent(in) :: label
    call put_html('</td></tr><tr><td style="text-align: right; font-weight: bold; width: 202px;">'//nul)
    call put_html(label)
  end subroutine row_label

  ! ---- 1: model parameters

  subroutine read_model_parameters()
    integer(ik) :: start(6), skip(6), option, solution, negative, icrd, intyp, intervals, i, count
    integer(ik), allocatable :: bypass(:)
    real(rk) :: fraction, smallest, largest, from_day, interval

    read (unit, '(I5,5X,I2)', iostat=status) model_type, file_version
    if (status == 0) read (unit, *, iostat=status) start
    if (status == 0) read (unit, *, iostat=status) skip
    if (status == 0) read (unit, *, iostat=status) simulation_length
    if (status == 0) read (unit, *, iostat=status) system_count
    if (status == 0) read (unit, *, iostat=status) option
    if (status == 0) read (unit, *, iostat=status) solution
    if (status == 0) read (unit, *, iostat=status) negative
    if (status == 0) read (unit, *, iostat=status) icrd
    if (status == 0) read (unit, *, iostat=status) intyp
    if (status == 0) read (unit, *, iostat=status) option
    if (status == 0) read (unit, *, iostat=status) fraction
    if (status == 0) read (unit, *, iostat=status) smallest, largest
    if (status == 0) read (unit, *, iostat=status) intervals
    if (status /= 0) return
    interval = 0
    do i = 1, intervals
      read (unit, *, iostat=status) from_day, interval
      if (status /= 0) return
    end do
    call send_parameter_table(start, interval)
    allocate (bypass(max(system_count, 0)), source=0_ik)
    read (unit, *, iostat=status) bypass
    do option = 1, 2
      if (status == 0) read (unit, *, iostat=status) count
      if (status /= 0) return
      do i = 1, count
        read (unit, *, iostat=status)
        if (status /= 0) return
      end do
    end do
    variable_count = 0
    if (model_type == 11) then
      do i = 1, min(system_count, system_limit)
        if (bypass(i) /= 0) cycle
        variable_count = variable_count + 1
        system_of_variable(variable_count) = i
      end do
    end if

    call put_text('PFILENAME'//nul, model_file_name//nul)
    call put_i('PMODELTYPE'//nul, model_type)
    call put_iii('PSEEDTIME'//nul, start(4), start(5), start(6))
    call put_iii('PSEEDDATE'//nul, start(1), start(2), start(3))
    call put_iii('PHYDSKIPDATE'//nul, skip(1), skip(2), skip(3))
    call put_iii('PHYDSKIPTIME'//nul, skip(4), skip(5), skip(6))
    call put_r('PENDJULIAN'//nul, simulation_length)
    call send_systems()
    call put_i('PSOLUTIONTYPE'//nul, solution)
    call put_i('PNEGSLN'//nul, negative)
    call put_i('PICRD'//nul, icrd)
    call put_i('PINTYP'//nul, intyp)
    call put_r('PFRACMAXTS'//nul, fraction)
    call put_r('PMAXDT'//nul, largest)
    call put_r('PMINDT'//nul, smallest)
    call put_r('PMODELOUTPUTINTERVAL'//nul, interval)
  end subroutine read_model_parameters

  subroutine send_parameter_table(start, interval)
    integer(ik), intent(in) :: start(6)
    real(rk), intent(in) :: interval
    character(len=132) :: module_name

    call put_html('<body><center><table style="text-align: left; width: 436px; height: 192px;"'//nul)
    call put_html('border="1" cellpadding="2" cellspacing="2"><tbody><tr align="center">'//nul)
    call put_html('<td style="width: 214px;" colspan="2" rowspan="1">'//nul)
    call put_html('<span style="font-weight: bold;">KOVA7 Model Parameters</span></td>'//nul)
    module_name = ' '
    if (model_type == 11) module_name = 'Adv. Eutrophication'
    if (model_type == 8) module_name = 'Advanced Toxicant'
    call put_html('</tr><tr><td style="text-align: right; font-weight: bold; width: 202px;">'//nul)
    call put_html('Module:</td><td style="width: 214px;">'//nul)
    call put_html(module_name//nul)
    call row_label('Starting Month:</td><td style="width: 214px;">'//nul)
    call integer_cell(start(1))
    call row_label('Starting Day:</td><td style="width: 214px;">'//nul)
    call integer_cell(start(2))
    call row_label('Starting Year:</td><td style="width: 214px;">'//nul)
    call integer_cell(start(3))
    call row_label('Simulation Length (days):</td><td style="width: 214px;">'//nul)
    call real_cell(simulation_length, '%f'//nul)
    call row_label('Number of Systems:</td><td style="width: 214px;">'//nul)
    call integer_cell(system_count)
    call put_html('</td></tr>'//nul)
    call put_html('<tr><td style="text-align: right; font-weight: bold; width: 202px;">'//nul)
    call put_html('Output Interval:</td><td style="width: 214px;">'//nul)
    call real_cell(interval, '%F'//nul)
    call put_html('</td></tr></tbody></table><br></center></body>'//nul)
  end subroutine send_parameter_table

  subroutine send_systems()
    integer(ik) :: i
    call put_i('PNUMSYS'//nul, variable_count)
    call put_html('<body><center><table style="text-align: left; width: 436px; height: 172px;"'//nul)
    call put_html('border="1" cellpadding="2" cellspacing="2"><tbody><tr align="center">'//nul)
    call put_html('<td style="width: 331px;" colspan="2" rowspan="1"><big><big><span'//nul)
    call put_html('style="font-weight: bold;">KOVA 8 State Variables Imported</span></big>'//nul)
    call put_html('</big></td></tr><tr><td style="width: 222px; text-align: center; '//nul)
    call put_html('font-weight: bold;">KOVA8 System</td><td'//nul)
    call put_html(' style="width: 331px; text-align: center; font-weight: bold;">System Name '//nul)
    call put_html('</td>'//nul)
    do i = 1, variable_count
      associate (short_name => short_names(system_of_variable(i))//nul, &
                 long_name => long_names(system_of_variable(i))//nul)
        call put_system_name(i, long_name, short_name)
        call put_html('<tr><td style="width: 222px; text-align: center;">'//nul)
        call put_html(short_name)
        call put_html('</td>'//nul)
        call put_html('<td style="width: 331px; text-align: center;">'//nul)
        call put_html(long_name)
        call put_html('</td></tr>'//nul)
      end associate
    end do
    call put_html('</tbody></table><br></center></body>'//nul)
    call put('PSYSTEMSREFRESH'//nul)
  end subroutine send_systems

  ! ---- 2: segments

  subroutine read_segments()
    integer(ik) :: bed_option, number, i
    real(rk) :: bed_step, factors(2)
    character(len=40), allocatable :: names(:)
    integer(ik), allocatable :: below(:), kinds(:)
    real(rk), allocatable :: geometry(:, :)

    read (unit, *, iostat=status) segment_count
    if (status == 0) read (unit, *, iostat=status) bed_option
    if (status == 0) read (unit, *, iostat=status) bed_step
    if (status == 0) read (unit, *, iostat=status) factors
    if (status == 0) read (unit, '(A40)', iostat=status) line
    if (status /= 0) return
    allocate (names(segment_count), below(segment_count), kinds(segment_count), geometry(10, segment_count))
    do i = 1, segment_count
      names(i) = repeat(nul, 40)
      read (unit, *, iostat=status) number, names(i)
      if (status /= 0) return
      names(i) = name_for_host(names(i), i)
    end do
    read (unit, '(A40)') line
    do i = 1, segment_count
      read (unit, *, iostat=status) number, below(i), kinds(i), geometry(:, i)
      if (status /= 0) return
    end do

    call put_i('PNUMSEG'//nul, segment_count)
    call put_i('PBEDOPT'//nul, bed_option)
    call put_r('PBEDDT'//nul, bed_step)
    call put_r('PSCALV'//nul, factors(1))
    call put_r('PCONVV'//nul, factors(2))
    call report('Importing Segment Information</span></li>'//nul)
    do i = 1, segment_count
      call put_name(i, names(i))
      call put_ii('PBOTSEG'//nul, i, below(i))
      call put_ii('PSEGTYPE'//nul, i, kinds(i))
      call put_ir('PVOLUME'//nul, i, geometry(1, i))
      call put_ir('PVMULT'//nul, i, geometry(2, i))
      call put_ir('PVEXP'//nul, i, geometry(3, i))
      call put_ir('PDMULT'//nul, i, geometry(4, i))
      call put_ir('PDEXP'//nul, i, geometry(5, i))
      call put_ir('PSEGSLOPE'//nul, i, geometry(7, i))
      call put_ir('PSEGLENGTH'//nul, i, geometry(6, i))
      call put_ir('PSEGWIDTH'//nul, i, geometry(8, i))
      call put_ir('PSEGROUGH'//nul, i, geometry(9, i))
      call put_ir('PSEGMINDEPTH'//nul, i, geometry(10, i))
    end do
    call put('PSEGMENTSREFRESH'//nul)
  end subroutine read_segments

  function name_for_host(name, number) result(text)
    character(len=40), intent(in) :: name
    integer(ik), intent(in) :: number
    character(len=40) :: text
    character(len=8) :: digits

    text = trim(name)//nul
    if (with_numbers) then
      if (number == 999 .or. number >= 9999) then
        text = repeat(nul, 40)
        return
      end if
      write (digits, '(I0)') number
      text = 'Seg-'//trim(digits)//'-'//trim(text)
    end if
    text = trim(text)//nul
  end function name_for_host

  ! ---- 3: flow paths

  subroutine read_flow_paths()
    integer(ik) :: field, function_number, pair, from
    integer :: functions, pairs
    integer(ik), allocatable :: pair_count(:), first(:), second(:)
    character(len=30), allocatable :: descriptions(:)
    real(rk), allocatable :: fraction(:)

    read (unit, *, iostat=status) flow_option
    if (status == 0) read (unit, *, iostat=status) field_count
    if (status /= 0) return
    if (allocated(inflow_count)) deallocate (inflow_count)
    allocate (inflow_count(max(field_count, 0)))
    functions = 0
    pairs = 0
    do field = 1, field_count
      read (unit, '(A80)', iostat=status) line
      if (status == 0) read (unit, *, iostat=status) inflow_count(field)
      if (status /= 0) return
      do function_number = 1, inflow_count(field)
        functions = functions + 1
        call grow(pair_count, functions)
        call grow_texts(descriptions, functions)
        read (unit, '(A80)', iostat=status) line
        descriptions(functions) = line(1:30)
        if (status == 0) read (unit, *, iostat=status) pair_count(functions)
        if (status /= 0) return
        call grow(first, pairs + pair_count(functions))
        call grow(second, pairs + pair_count(functions))
        call grow_reals(fraction, pairs + pair_count(functions))
        do pair = 1, pair_count(functions)
          pairs = pairs + 1
          read (unit, *, iostat=status) first(pairs), second(pairs), fraction(pairs)
          if (status /= 0) return
        end do
      end do
    end do

    call report('Importing Flow Path Information</span></li>'//nul)
    do from = 1, segment_count
      call put_ii('PFLOWTYPE'//nul, from, flow_option)
    end do
    call put_i('PNFIELD'//nul, field_count)
    functions = 0
    pairs = 0
    do field = 1, field_count
      call put_ii('PNINQ'//nul, field, inflow_count(field))
      do function_number = 1, inflow_count(field)
        functions = functions + 1
        call put_iii('PNOQS'//nul, field, function_number, pair_count(functions))
        call put_function_field('PFLOWFUNCDESC'//nul, field, function_number, descriptions(functions))
        do pair = 1, pair_count(functions)
          pairs = pairs + 1
          call put_iiii('PJQ'//nul, field, function_number, pair, first(pairs))
          call put_iiii('PIQ'//nul, field, function_number, pair, second(pairs))
          call put_iiir('PBQ'//nul, field, function_number, pair, fraction(pairs))
        end do
      end do
    end do
  end subroutine read_flow_paths

  ! ---- 4: flow time series

  subroutine read_flow_series()
    integer(ik) :: field, function_number, place
    integer :: functions, row
    integer(ik), allocatable :: counts(:)
    real(rk) :: factors(2)

    read (unit, *, iostat=status) field_count
    if (status /= 0) return
    functions = 0
    factors = 0
    call release_breakpoints()
    do field = 1, field_count
      read (unit, '(A80)', iostat=status) line
      if (status == 0) read (unit, *, iostat=status) inflow_count(field)
      if (status == 0 .and. inflow_count(field) > 0) read (unit, *, iostat=status) factors
      if (status /= 0) return
      do function_number = 1, inflow_count(field)
        functions = functions + 1
        call grow(counts, functions)
        read (unit, '(A80)', iostat=status) line
        if (status == 0) read (unit, *, iostat=status) counts(functions)
        if (status == 0) call read_breakpoints(counts(functions))
        if (status /= 0) return
      end do
    end do

    call report('Importing Flow Time Series</span></li>'//nul)
    call put_i('PNFIELD'//nul, field_count)
    functions = 0
    row = 0
    do field = 1, field_count
      call put_ii('PNINQ'//nul, field, inflow_count(field))
      if (inflow_count(field) > 0) then
        call put_ir('PSCALEQ'//nul, field, factors(1))
        call put_ir('PCONVQ'//nul, field, factors(2))
      end if
      do function_number = 1, inflow_count(field)
        functions = functions + 1
        call put_iii('PNBRKQ'//nul, field, function_number, counts(functions))
        do place = 1, counts(functions)
          row = row + 1
          call put_iiirr('PNOQFUNC'//nul, field, function_number, place, first_values(row), second_values(row))
        end do
      end do
    end do
    call put('PFLOWSREFRESH'//nul)
    call release_breakpoints()
  end subroutine read_flow_series

  ! ---- 5: exchanges

  subroutine read_exchanges()
    integer(ik) :: fields, field, function_number, pair, place
    integer :: functions, pairs, row
    integer(ik), allocatable :: function_count(:), pair_count(:), counts(:), first(:), second(:)
    character(len=30), allocatable :: descriptions(:)
    real(rk), allocatable :: area(:), length(:)
    real(rk) :: factors(2)

    read (unit, *, iostat=status) fields
    if (status /= 0) return
    allocate (function_count(max(fields, 0)))
    functions = 0
    pairs = 0
    factors = 0
    call release_breakpoints()
    do field = 1, fields
      read (unit, *, iostat=status) line
      if (status == 0) read (unit, *, iostat=status) function_count(field)
      if (status == 0 .and. function_count(field) > 0) read (unit, *, iostat=status) factors
      if (status /= 0) return
      do function_number = 1, function_count(field)
        functions = functions + 1
        call grow(pair_count, functions)
        call grow(counts, functions)
        call grow_texts(descriptions, functions)
        read (unit, '(A80)') line
        descriptions(functions) = line(1:30)
        read (unit, *, iostat=status) pair_count(functions)
        if (status /= 0) return
        call grow(first, pairs + pair_count(functions))
        call grow(second, pairs + pair_count(functions))
        call grow_reals(area, pairs + pair_count(functions))
        call grow_reals(length, pairs + pair_count(functions))
        do pair = 1, pair_count(functions)
          pairs = pairs + 1
          read (unit, *, iostat=status) first(pairs), second(pairs), area(pairs), length(pairs)
          if (status /= 0) return
        end do
        read (unit, *, iostat=status) counts(functions)
        if (status == 0) call read_breakpoints(counts(functions))
        if (status /= 0) return
      end do
    end do

    call report('Importing Exchange Information</span></li>'//nul)
    call put_i('PNRFLD'//nul, fields)
    functions = 0
    pairs = 0
    row = 0
    do field = 1, fields
      if (function_count(field) < 1) cycle
      call put_ii('PNTEX'//nul, field, function_count(field))
      call put_ir('PSCALER'//nul, field, factors(1))
      call put_ir('PCONVR'//nul, field, factors(2))
      do function_number = 1, function_count(field)
        functions = functions + 1
        call put_function_field('PEXCHANGEFUNCDESC'//nul, field, function_number, descriptions(functions))
        call put_iii('PNORS'//nul, field, function_number, pair_count(functions))
        do pair = 1, pair_count(functions)
          pairs = pairs + 1
          call put_iiii('PJRSEG'//nul, field, function_number, pair, first(pairs))
          call put_iiii('PIRSEG'//nul, field, function_number, pair, second(pairs))
          call put_iiir('PXAREA'//nul, field, function_number, pair, area(pairs))
          call put_iiir('PLENGTH'//nul, field, function_number, pair, length(pairs))
        end do
        call put_iii('PNOBRKS'//nul, field, function_number, counts(functions))
        do place = 1, counts(functions)
          row = row + 1
          call put_iiirr('PNORFUNC'//nul, field, function_number, place, first_values(row), second_values(row))
        end do
      end do
    end do
    call put('PEXCHANGESREFRESH'//nul)
    call release_breakpoints()
  end subroutine read_exchanges

  ! ---- 6 and 7: boundary conditions and loads

  logical function is_simulated(system)
    integer(ik), intent(in) :: system
    is_simulated = any(system_of_variable(1:variable_count) == system)
  end function is_simulated

  ! Reads the series of a system behind their factors. Those of a system that is not simulated are read and let go.
  subroutine read_series_of_system(count, is_kept, series, segments, counts)
    integer(ik), intent(in) :: count
    logical, intent(in) :: is_kept
    integer, intent(inout) :: series
    integer(ik), allocatable, intent(inout) :: segments(:), counts(:)
    integer(ik) :: i
    integer :: kept_breakpoints

    call grow(segments, series + count)
    call grow(counts, series + count)
    do i = series + 1, series + count
      read (unit, *, iostat=status) segments(i)
      if (status == 0) read (unit, *, iostat=status) counts(i)
      if (status /= 0) return
      if (counts(i) > buffer_size) then
        status = 1
        return
      end if
      kept_breakpoints = breakpoints
      call read_breakpoints(counts(i))
      if (status /= 0) return
      if (.not. is_kept) breakpoints = kept_breakpoints
    end do
    if (is_kept) series = series + max(count, 0)
  end subroutine read_series_of_system

  subroutine fill_buffers(row, count)
    integer, intent(inout) :: row
    integer(ik), intent(in) :: count
    value_buffer(1:count) = first_values(row + 1:row + count)
    time_buffer(1:count) = second_values(row + 1:row + count)
    row = row + count
  end subroutine fill_buffers

  subroutine read_boundaries()
    integer(ik) :: system, variables, variable, count, i, series_counts(system_limit)
    integer :: series, row
    integer(ik), allocatable :: segments(:), counts(:)
    real(rk) :: scale_factor(system_limit), factors(2)

    read (unit, *, iostat=status) system_count
    if (status /= 0) return
    call release_breakpoints()
    variables = 0
    series = 0
    series_counts = 0
    scale_factor = 0
    call put_i('PPROGRESS'//nul, 0_ik)
    do system = 1, system_count
      call put_i('PPROGRESS'//nul, percentage(system, variable_count))
      read (unit, '(A80)', iostat=status) line
      if (status == 0) read (unit, *, iostat=status) count
      if (status == 0 .and. count > 0) read (unit, '(2(F10.0))', iostat=status) factors
      if (status /= 0) return
      if (is_simulated(system)) then
        variables = variables + 1
        series_counts(variables) = count
        if (count > 0) scale_factor(variables) = factors(1)
      end if
      call read_series_of_system(count, is_simulated(system), series, segments, counts)
      if (status /= 0) return
    end do
    if (transport_only) return

    call report('Importing Boundary Information</span></li>'//nul)
    call put_i('PPROGRESS'//nul, 0_ik)
    series = 0
    row = 0
    do variable = 1, variable_count
      call put_i('PPROGRESS'//nul, percentage(variable, variable_count))
      call put_ii('PNOBC'//nul, variable, series_counts(variable))
      if (series_counts(variable) < 1) cycle
      call put_ir('PSCALB'//nul, variable, scale_factor(variable))
      do i = 1, series_counts(variable)
        series = series + 1
        call put_iii('PIBC'//nul, variable, i, segments(series))
        call put_iii('PNBFP'//nul, variable, i, counts(series))
        call fill_buffers(row, counts(series))
        call put_series('PALLBOUNDFUNC'//nul, variable, i, value_buffer, time_buffer)
      end do
    end do
    call release_breakpoints()
  end subroutine read_boundaries

  integer(ik) function percentage(done, total)
    integer(ik), intent(in) :: done, total
    percentage = 0
    if (total /= 0) percentage = done/total*100
  end function percentage

  subroutine read_loads()
    integer(ik) :: option, system, variables, variable, count, i, series_counts(system_limit)
    integer :: series, row
    integer(ik), allocatable :: segments(:), counts(:)
    character(len=512) :: file_name
    real(rk) :: first_factor(system_limit), factors(2)

    read (unit, *, iostat=status) option
    if (status == 0 .and. option > 0) read (unit, '(A512)', iostat=status) file_name
    if (status == 0) read (unit, *, iostat=status) system_count
    if (status /= 0) return
    call release_breakpoints()
    variables = 0
    series = 0
    series_counts = 0
    first_factor = 0
    do system = 1, system_count
      read (unit, *, iostat=status) line
      if (status == 0) read (unit, *, iostat=status) count
      if (status == 0 .and. count > 0) read (unit, *, iostat=status) factors
      if (status /= 0) return
      if (is_simulated(system)) then
        variables = variables + 1
        series_counts(variables) = count
        if (count > 0) first_factor(variables) = factors(1)
      end if
      call read_series_of_system(count, is_simulated(system), series, segments, counts)
      if (status /= 0) return
    end do
    if (transport_only) return

    call report('Importing Loading Information</span></li>'//nul)
    call put_i('PLOPT'//nul, option)
    if (option > 0) call put_text('PNPSFILE'//nul, file_name)
    series = 0
    row = 0
    do variable = 1, variable_count
      if (series_counts(variable) < 1) then
        call put_ir('PSCALW'//nul, variable, 0.0_rk)
        call put_ir('PCONVW'//nul, variable, 0.0_rk)
        call put_iii('PNBWK'//nul, variable, 1_ik, 2_ik)
        value_buffer(1:2) = 0
        time_buffer(1:2) = 0
        call put_series('PALLLOADFUNC'//nul, variable, 1_ik, value_buffer, time_buffer)
        cycle
      end if
      call put_ir('PCONVB'//nul, variable, first_factor(variable))
      do i = 1, series_counts(variable)
        series = series + 1
        call put_iii('PNBWK'//nul, variable, segments(series), counts(series))
        call fill_buffers(row, counts(series))
        call put_series('PALLLOADFUNC'//nul, variable, segments(series), value_buffer, time_buffer)
      end do
    end do
    call release_breakpoints()
  end subroutine read_loads

  ! ---- 8: environmental time functions

  subroutine read_time_functions()
    integer(ik) :: count, i, k, number(function_limit), length(function_limit), current(function_limit), series, place
    integer(ik) :: targets, target_number(function_limit), series_of(function_limit, 2), series_count(function_limit)
    integer :: start(function_limit), row
    character(len=30) :: name(function_limit)
    character(len=132) :: text
    real(rk) :: factor

    read (unit, *, iostat=status) count
    if (status == 0 .and. count > function_limit) status = 1
    if (status /= 0) return
    call release_breakpoints()
    do i = 1, count
      read (unit, *, iostat=status) number(i)
      name(i) = ' '
      if (status == 0) read (unit, *, iostat=status) name(i)
      if (status == 0) read (unit, *, iostat=status) length(i)
      if (status /= 0) return
      start(i) = breakpoints
      call read_breakpoints(length(i))
      if (status /= 0) return
    end do
    if (transport_only) then
      call put('PTFSREFRESH'//nul)
      return
    end if

    targets = 0
    do i = 1, count
      current(i) = 0
      text = ' '
      select case (number(i))
      case (1)
        current(i) = 1
      case (5)
        current(i) = 4
        text = 'Solar Radiation Time Function Converted from Langleys to Watts/m2: '
      case (6)
        current(i) = 3
      case (7)
        current(i) = 21
      case (10)
        current(i) = 17
        has_air_temperature = .true.
      case (14)
        current(i) = 9
      case (2)
        text = 'Water Temperature Time Function 2 not supported in KOVA8: '
      case (17)
        text = 'Time Function not supported: '
      case (23)
        if (targets > 0) then
          series_count(targets) = 2
          series_of(targets, 2) = i
        end if
      end select
      if (current(i) /= 0) then
        targets = targets + 1
        target_number(targets) = current(i)
        series_count(targets) = 1
        series_of(targets, 1) = i
      end if
      if (text /= ' ') then
        call put_html('<li><span style="font-weight: bold; color: Red;">'//nul)
        text(len_trim(text) + 2:) = name(i)//'</span></li>'
        call put_html(text//nul)
      end if
    end do

    call report('Importing Time Function Information</span></li>'//nul)
    do k = 1, targets
      do series = 1, series_count(k)
        i = series_of(k, series)
        factor = 1
        if (series == 1 .and. number(i) == 5) factor = 0.48426_rk
        call put_iii('PNBRKTF'//nul, target_number(k), series, length(i))
        row = start(i)
        do place = 1, length(i)
          row = row + 1
          call put_iiirr('PBRKTF'//nul, target_number(k), series, place, first_values(row), second_values(row)*factor)
        end do
      end do
    end do
    call put('PTFSREFRESH'//nul)
    call release_breakpoints()
  end subroutine read_time_functions

  ! ---- 9: segment parameters

  subroutine read_segment_parameters()
    integer, parameter :: legacy(13) = [2, 4, 6, 7, 8, 9, 9, 19, 22, 24, 25, 27, 28]
    integer(ik), parameter :: current(13) = [1, 17, 30, 31, 32, 4, 5, 21, 6, 19, 19, 20, 20]
    integer(ik), parameter :: classes(13) = [1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 2, 1, 2]
    integer(ik) :: parameter_count, i, k, number, segment, column
    integer(ik), allocatable :: listed(:), entry_number(:), entry_class(:), entry_place(:)
    real(rk), allocatable :: scales(:), values(:, :), entry_scale(:)
    integer :: entries

    read (unit, *, iostat=status) segment_count
    if (status == 0) read (unit, *, iostat=status) parameter_count
    if (status /= 0) return
    column = max(parameter_count, 0)
    allocate (listed(column), scales(column), values(segment_count, column))
    allocate (entry_number(2*column + 2), entry_class(2*column + 2), entry_place(2*column + 2), &
              entry_scale(2*column + 2))
    if (parameter_count > 0) then
      do i = 1, parameter_count
        read (unit, *, iostat=status) listed(i), scales(i)
        if (status /= 0) return
      end do
      do segment = 1, segment_count
        read (unit, *, iostat=status) number
        if (status /= 0) return
        do i = 1, parameter_count
          read (unit, *, iostat=status) listed(i), values(segment, i)
          if (status /= 0) return
        end do
      end do
    end if
    if (transport_only) return

    entries = 0
    do i = 1, parameter_count
      do k = 1, size(legacy)
        if (legacy(k) /= listed(i)) cycle
        call add_entry(current(k), classes(k), merge(0_ik, i, current(k) == 5), scales(i))
      end do
    end do
    if (has_air_temperature) then
      call add_entry(2_ik, 1_ik, 0_ik, 1.0_rk)
      call add_entry(3_ik, 1_ik, 0_ik, 1.0_rk)
    end if
    if (entries > 0) then
      call report('Importing Segment Parameter Information</span></li>'//nul)
      do k = 1, entries
        call put_ii('PADDPARAM'//nul, entry_number(k), entry_class(k))
        call put_iir('PSCALEPARAMBYISC'//nul, entry_number(k), entry_class(k), entry_scale(k))
      end do
      call put('PPARAMSREFRESH'//nul)
      do k = 1, entries
        do segment = 1, segment_count
          if (entry_place(k) == 0) then
            call put_iiir('PCONSTPARAM'//nul, segment, entry_number(k), entry_class(k), 1.0_rk)
          else
            call put_iiir('PCONSTPARAM'//nul, segment, entry_number(k), entry_class(k), &
                          values(segment, entry_place(k)))
          end if
        end do
      end do
    end if
    call put('PPARAMSREFRESH'//nul)

  contains

    ! Place 0: its scale factor and all its values are 1.
    subroutine add_entry(parameter_number, class, place, scale)
      integer(ik), intent(in) :: parameter_number, class, place
      real(rk), intent(in) :: scale
      entries = entries + 1
      entry_number(entries) = parameter_number
      entry_class(entries) = class
      entry_place(entries) = place
      entry_scale(entries) = merge(1.0_rk, scale, place == 0)
    end subroutine add_entry

  end subroutine read_segment_parameters

  ! ---- 10: kinetic constants

  subroutine read_constants()
    integer(ik), parameter :: most = 3000
    integer(ik) :: count, i, number, current, column, column_count(most), series_count
    integer :: listed
    real(rk) :: value, values(3, most)
    integer(ik), allocatable :: list(:), series_number(:)
    real(rk), allocatable :: series_value(:)

    read (unit, *, iostat=status) count
    if (status /= 0) return
    column_count = 0
    values = 0
    listed = 0
    series_count = 0
    do i = 1, count
      read (unit, *, iostat=status) number, value
      if (status /= 0) return
      if (number == 2 .or. number == 3) then
        series_count = series_count + 1
        call grow(series_number, series_count)
        call grow_reals(series_value, series_count)
        series_number(series_count) = number + 35
        series_value(series_count) = value
        cycle
      end if
      column = 1
      select case (number)
      case (60:67)
        current = number - 6
      case (69:76)
        current = number + 23
      case (110:118)
        current = number - 46
      case (140:148)
        current = number - 76
        column = 2
      case default
        cycle
      end select
      values(column, current) = value
      if (column == 1) then
        listed = listed + 1
        call grow(list, listed)
        list(listed) = current
      end if
      column_count(current) = column
    end do
    if (transport_only) return

    call report('Importing Kinetic Constants</span></li>'//nul)
    do i = 1, listed
      do column = 1, column_count(list(i))
        call put_ii('PADDCONST'//nul, list(i), column)
      end do
    end do
    call put('PCONSTANTSREFRESH'//nul)
    do i = 1, listed
      do column = 1, column_count(list(i))
        call put_iir('PCONSTVALUEBYISC'//nul, list(i), column, values(column, list(i)))
        call put_iii('PCONSTISUSED'//nul, list(i), column, 1_ik)
      end do
    end do
    call put('PCONSTANTSREFRESH'//nul)
    do i = 1, series_count
      call put_iii('PNBRKTF'//nul, series_number(i), 1_ik, 2_ik)
      call put_iiirr('PBRKTF'//nul, series_number(i), 1_ik, 1_ik, 0.0_rk, series_value(i))
      call put_iiirr('PBRKTF'//nul, series_number(i), 1_ik, 2_ik, simulation_length, series_value(i))
    end do
    if (series_count > 0) call put('PTFSREFRESH'//nul)
  end subroutine read_constants

  ! ---- 11: initial conditions

  subroutine read_initial_conditions()
    integer(ik) :: system, variables, variable, i, segment, flow_field(system_limit), carrying_field
    real(rk) :: system_density, largest, concentration, fraction
    real(rk) :: density(system_limit), maximum(system_limit)
    real(rk), allocatable :: values(:, :, :)
    logical :: is_kept

    read (unit, *, iostat=status) system_count
    if (status == 0) read (unit, *, iostat=status) segment_count
    if (status /= 0) return
    allocate (values(2, segment_count, variable_count), source=0.0_rk)
    variables = 0
    do system = 1, system_count
      is_kept = is_simulated(system)
      read (unit, '(A80)') line
      read (unit, *, iostat=status) carrying_field
      if (status == 0) read (unit, *, iostat=status) system_density
      if (status == 0) read (unit, *, iostat=status) largest
      if (status /= 0) return
      read (unit, '(A80)') line
      if (is_kept) then
        variables = variables + 1
        flow_field(variables) = carrying_field
        density(variables) = system_density
        maximum(variables) = largest
      end if
      do i = 1, segment_count
        read (unit, *, iostat=status) segment, concentration, fraction
        if (status == 0 .and. (segment < 1 .or. segment > segment_count)) status = 1
        if (status /= 0) return
        if (is_kept) then
          values(1, segment, variables) = concentration
          values(2, segment, variables) = fraction
        end if
      end do
    end do

    call report('Importing Initial Conditions</span></li>'//nul)
    if (transport_only) return
    do variable = 1, variable_count
      call put_ir('PCMAX'//nul, variable, maximum(variable))
      call put_ir('PDENSITY'//nul, variable, density(variable))
      call put_ii('PIFIELD'//nul, variable, flow_field(variable))
      do segment = 1, segment_count
        call put_iir('PINITC'//nul, variable, segment, values(1, segment, variable))
        call put_iir('PFDISS'//nul, variable, segment, values(2, segment, variable))
      end do
    end do
  end subroutine read_initial_conditions

end module fortran_import
